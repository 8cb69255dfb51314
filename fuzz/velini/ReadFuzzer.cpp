// Reads arbitrary bytes, twice into one document. Whatever they are, reading ends, raises only what
// it says it raises, and leaves a document in which all promises about names and kinds hold.

#include "FuzzSupport.h"

#include <set>

using velINI::IniKey;
using velINI::IniSection;
using velINI::KeyKind;
using velINI::velINIStream;
using velINI::Fuzzing::Outcome;
using velINI::Fuzzing::Require;

namespace {

void CheckNames(const std::vector<IniKey>& entries) {
    std::set<std::string> names;
    for (const IniKey& entry : entries) {
        Require(names.insert(entry.Name).second, "names are unique in their list");
    }
}

void CheckEntry(const IniSection& section, const IniKey& entry) {
    Require(section.FindKey(entry.Name)->Name == entry.Name, "an entry is found by its name");
    Require(entry.Comment != "", "an empty comment is no comment");
    Require(!entry.Verbatim && !entry.ExplicitIndex, "the reader sets neither of these");
    Require(entry.Kind <= KeyKind::Array, "an entry is of one of four kinds");
    CheckNames(entry.Elements);
    for (const IniKey& element : entry.Elements) {
        Require(element.Kind == KeyKind::Value, "elements are values");
        Require(element.Elements.empty(), "arrays do not nest");
    }
}

void CheckDocument(const velINIStream& document) {
    std::set<std::string> names;
    for (const IniSection& section : document.Sections) {
        Require(names.insert(section.Name).second, "no two sections have one name");
        Require(section.Comment != "", "an empty comment is no comment");
        CheckNames(section.Keys);
        for (const IniKey& entry : section.Keys) {
            CheckEntry(section, entry);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string path = velINI::Fuzzing::StoreInput(data, size);
    velINIStream document;
    const Outcome first = velINI::Fuzzing::Read(document, path);
    CheckDocument(document);
    Require(first != Outcome::Refused || size < 6, "only short files are refused");
    Require(first != Outcome::Read || !document.Sections.empty(),
            "a file that was read has a section");
    velINI::Fuzzing::Read(document, path);
    CheckDocument(document);
    return 0;
}
