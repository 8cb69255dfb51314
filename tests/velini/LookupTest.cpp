// Lookups in long lists are fast, and right whatever was edited in the records directly. Fast is
// counted in comparisons of names; bench/velini measures the time.

#include "velini/VelINIStream.h"
#include "velini/internal/Entries.h"
#include "velini/support/EqualHashes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <utility>

namespace velINI {
namespace {

std::size_t FirstOfName(const std::vector<IniKey>& entries, const std::string& name) {
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&](const IniKey& entry) { return entry.Name == name; });
    return static_cast<std::size_t>(found - entries.begin());
}

IniSection LongSection(std::size_t count) {
    IniSection section;
    for (std::size_t i = 0; i < count; ++i) {
        section.SetKeyValue("key" + std::to_string(i), std::to_string(i), false);
    }
    return section;
}

// Both lookups find what a walk over the entries finds.
void ExpectFound(IniSection& section, const std::string& name) {
    const auto expected = static_cast<std::ptrdiff_t>(FirstOfName(section.Keys, name));
    const IniSection& constant = section;
    EXPECT_EQ(constant.FindKey(name) - constant.Keys.begin(), expected) << name;
    EXPECT_EQ(section.FindKey(name) - section.Keys.begin(), expected) << name;
    EXPECT_EQ(constant.FindKey(name) - constant.Keys.begin(), expected) << name;
}

constexpr std::size_t Long = 200;

TEST(Lookup, KnowsANameThatIsChangedInPlace) {
    IniSection section = LongSection(Long);
    IniKey& kept = section.Keys[150];
    ExpectFound(section, "key150");
    kept.Name = "other";
    ExpectFound(section, "key150");
    ExpectFound(section, "other");
    section.FindKey("key7")->Name = "other";
    ExpectFound(section, "other");
}

TEST(Lookup, KnowsEntriesThatComeAndGo) {
    IniSection section = LongSection(Long);
    IniKey added;
    added.Name = "added";
    section.Keys.erase(section.Keys.begin() + 3);
    section.Keys.insert(section.Keys.begin(), added);
    ExpectFound(section, "added");
    ExpectFound(section, "key3");
    ExpectFound(section, "key199");
    section.Keys.pop_back();
    section.Keys.push_back(added);
    section.Keys.front().Name = "first";
    ExpectFound(section, "added");
    section.Keys.resize(40);
    ExpectFound(section, "key39");
    section.Keys.clear();
    ExpectFound(section, "first");
}

TEST(Lookup, KnowsAListThatTakesThePlaceOfAnother) {
    IniSection section = LongSection(Long);
    IniSection other = LongSection(Long);
    other.Keys[5].Name = "five";
    std::swap(section.Keys, other.Keys);
    ExpectFound(section, "five");
    ExpectFound(other, "key5");
    std::swap(section, other);
    ExpectFound(other, "five");
    section.Keys = std::move(other.Keys);
    ExpectFound(section, "five");
    IniSection copy = section;
    copy.Keys[6].Name = "six";
    ExpectFound(copy, "six");
    ExpectFound(section, "six");
    const IniSection moved = std::move(copy);
    EXPECT_EQ(moved.FindKey("six") - moved.Keys.begin(), 6);
}

TEST(Lookup, KnowsAListThatLeavesAndComesBackChanged) {
    IniSection section = LongSection(Long);
    {
        IniSection other;
        other.Keys = std::move(section.Keys);
        ExpectFound(other, "key9");
        other.Keys[9].Name = "nine";
        section.Keys = std::move(other.Keys);
    }
    ExpectFound(section, "nine");
    ExpectFound(section, "key9");
}

TEST(Lookup, FindsTheFirstOfEqualNames) {
    IniSection section = LongSection(Long);
    section.Keys.push_back(section.Keys[20]);
    ExpectFound(section, "key20");
    section.Keys[20].Name = "other";
    ExpectFound(section, "key20");
    section.Keys[10].Name = "key20";
    ExpectFound(section, "key20");
}

TEST(Lookup, FindsWhatAWalkFindsWhateverWasEdited) {
    std::mt19937 engine(11); // NOLINT(cert-msc51-cpp): always the same edits
    const auto pick = [&](std::size_t choices) { return engine() % choices; };
    const auto anyName = [&] { return "key" + std::to_string(pick(2 * Long)); };
    IniSection section = LongSection(Long);
    IniSection other = LongSection(Long / 2);
    for (int edit = 0; edit < 3000; ++edit) {
        std::vector<IniKey>& keys = section.Keys;
        const auto place = keys.begin() + static_cast<std::ptrdiff_t>(pick(keys.size()));
        switch (pick(9)) {
        case 0:
            place->Name = anyName();
            break;
        case 1:
            keys.erase(place);
            break;
        case 2:
            keys.insert(place, keys.front())->Name = anyName();
            break;
        case 3:
            keys.emplace_back().Name = anyName();
            break;
        case 4:
            std::swap(*place, keys.front());
            break;
        case 5:
            section.SetKeyValue(anyName(), "v", false);
            break;
        case 6:
            section.AddComment(anyName(), "c", InsertPosition::Begin, std::nullopt, false);
            break;
        case 7:
            std::swap(section.Keys, other.Keys);
            break;
        default:
            *place = other.Keys[pick(other.Keys.size())];
            break;
        }
        ExpectFound(section, anyName());
        ASSERT_FALSE(HasFailure()) << "after edit " << edit;
    }
}

TEST(Lookup, OfSectionsKnowsAChangedName) {
    velINIStream document;
    for (std::size_t i = 0; i < Long; ++i) {
        document.SetValue("section" + std::to_string(i), "k", std::to_string(i), false);
    }
    const velINIStream& constant = document;
    EXPECT_EQ(document.GetValue("section77", "k", ""), "77");
    EXPECT_EQ(constant.GetValue("section77", "k", ""), "77");
    document.SectionAt(77).Name = "renamed";
    EXPECT_EQ(constant.GetValue("renamed", "k", ""), "77");
    EXPECT_EQ(constant.GetValue("section77", "k", "gone"), "gone");
    EXPECT_EQ(document.GetValue("section77", "k", "gone"), "gone");
    EXPECT_EQ(document.GetValue("renamed", "k", ""), "77");
}

TEST(Lookup, NumbersElementsThatWereRenamed) {
    IniKey array;
    array.Kind = KeyKind::Array;
    for (std::size_t i = 0; i < Long; ++i) {
        array.SetElement({}, "v", false, false, {});
    }
    array.Elements[3].Name = "1000";
    array.SetElement({}, "v", false, false, {});
    EXPECT_EQ(array.Elements.back().Name, "1001");
    array.Elements.pop_back();
    array.Elements[3].Name = "3";
    array.SetElement({}, "v", false, false, {});
    EXPECT_EQ(array.Elements.back().Name, std::to_string(Long));
    array.Elements[3].Name = "x";
    EXPECT_THROW(array.SetElement({}, "v", false, false, {}), std::invalid_argument);
}

// How many comparisons it takes to add so many names to a section and to find them again.
std::size_t ComparisonsOf(const std::vector<std::string>& names) {
    std::size_t comparisons = 0;
    IniSection section;
    for (int round = 0; round < 2; ++round) {
        for (const std::string& name : names) {
            const std::size_t place = section.KeyIndex.Locate(section.Keys, name, comparisons);
            Internal::StoreValue(section, place, name, "v", false);
        }
    }
    EXPECT_EQ(section.Keys.size(), names.size());
    return comparisons;
}

TEST(LookupGrowth, OfNewKeysIsLinear) {
    std::vector<std::string> names(32'000);
    for (std::size_t i = 0; i < names.size(); ++i) {
        names[i] = "key" + std::to_string(i);
    }
    EXPECT_LE(ComparisonsOf(names), 3 * names.size());
}

TEST(LookupGrowth, OfNamesWithEqualStandardHashesIsLinear) {
    const std::vector<std::string> names = Testing::NamesOfEqualHash(20'000);
#ifdef __GLIBCXX__
    for (const std::string& name : names) {
        ASSERT_EQ(std::hash<std::string>()(name), std::hash<std::string>()(names.front()));
    }
#endif
    EXPECT_LE(ComparisonsOf(names), 3 * names.size());
}

TEST(LookupGrowth, OfNumberedElementsIsLinear) {
    constexpr std::size_t Count = 32'000;
    IniKey array;
    array.Kind = KeyKind::Array;
    const auto seen = [&] {
        const Internal::ElementNumbers* numbers =
            array.Elements.Index().Numbers(array.Elements.List());
        return numbers == nullptr ? 0 : numbers->Seen;
    };
    std::size_t comparisons = 0;
    std::size_t looks = 0;
    for (std::size_t i = 0; i < Count; ++i) {
        const std::size_t before = seen();
        const std::string name = Internal::NextElement(array);
        looks += array.Elements.size() - before;
        Internal::StoreElement(array, {name, "v", false, false, {}}, comparisons);
    }
    EXPECT_LE(looks, 4 * Count);
    EXPECT_LE(comparisons, 2 * Count);
    EXPECT_EQ(array.Elements.back().Name, std::to_string(Count - 1));
}

} // namespace
} // namespace velINI
