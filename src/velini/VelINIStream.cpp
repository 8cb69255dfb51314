#include "velini/VelINIStream.h"

#include "velini/internal/Names.h"

#include <iterator>
#include <stdexcept>
#include <utility>

namespace velINI {
namespace {

std::size_t CheckedIndex(std::ptrdiff_t index, std::size_t size) {
    if (index < 0 || static_cast<std::size_t>(index) >= size) {
        throw std::logic_error("Index is out of range!");
    }
    return static_cast<std::size_t>(index);
}

template <class Document>
std::string ValueOf(Document& document, std::string_view sectionName, std::string_view keyName,
                    std::string_view defaultValue) {
    const auto section = document.FindSection(sectionName);
    if (section == document.Sections.end()) {
        return std::string(defaultValue);
    }
    const auto key = section->FindKey(keyName);
    return key == section->Keys.end() ? std::string(defaultValue) : key->Value;
}

} // namespace

IniSection& velINIStream::SectionAt(std::ptrdiff_t index) {
    return Sections[CheckedIndex(index, Sections.size())];
}

const IniSection& velINIStream::SectionAt(std::ptrdiff_t index) const {
    return Sections[CheckedIndex(index, Sections.size())];
}

std::vector<IniSection>::iterator velINIStream::FindSection(std::string_view name) {
    std::size_t comparisons = 0;
    const std::size_t position = SectionIndex.Locate(Sections, name, comparisons);
    return std::next(Sections.begin(), static_cast<std::ptrdiff_t>(position));
}

std::vector<IniSection>::const_iterator velINIStream::FindSection(std::string_view name) const {
    return std::next(Sections.begin(),
                     static_cast<std::ptrdiff_t>(SectionIndex.Find(Sections, name)));
}

std::string velINIStream::GetValue(std::string_view sectionName, std::string_view keyName,
                                   std::string_view defaultValue) {
    return ValueOf(*this, sectionName, keyName, defaultValue);
}

std::string velINIStream::GetValue(std::string_view sectionName, std::string_view keyName,
                                   std::string_view defaultValue) const {
    return ValueOf(*this, sectionName, keyName, defaultValue);
}

void velINIStream::SetValue(std::string_view sectionName, std::string_view keyName,
                            std::string_view value, bool quoted) {
    const auto section = FindSection(sectionName);
    if (section != Sections.end()) {
        section->SetKeyValue(keyName, value, quoted);
        return;
    }
    // Filled before it joins the others, since the texts may be those of a section.
    IniSection added;
    added.Name = sectionName;
    added.SetKeyValue(keyName, value, quoted);
    Sections.push_back(std::move(added));
    SectionIndex.Appended(Sections);
}

void velINIStream::AddBlankLine(std::string_view sectionName) {
    const auto section = FindSection(sectionName.empty() ? Internal::GlobalSection : sectionName);
    if (section != Sections.end()) {
        section->AddEmptyLine(
            Internal::GeneratedName(Internal::EmptyLinePrefix, ++section->EmptyLineCount));
    }
}

} // namespace velINI
