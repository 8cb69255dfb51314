#include "support/Fnv1a.h"

#include <gtest/gtest.h>

#include <string_view>

namespace Wirefall::Testing {
namespace {

constexpr std::uint64_t HashOf(std::string_view text) {
    Fnv1a hash;
    for (const char c : text) {
        hash.AddByte(static_cast<std::uint8_t>(c));
    }
    return hash.Value();
}

// The test vectors of RFC 9923.
TEST(Fnv1a, IsTheOneThatIsPublished) {
    EXPECT_EQ(HashOf(""), 0xcbf29ce484222325U);
    EXPECT_EQ(HashOf("a"), 0xaf63dc4c8601ec8cU);
    EXPECT_EQ(HashOf("foobar"), 0x85944171f73967e8U);
}

TEST(Fnv1a, TakesNumbersFromTheirLowestByteOn) {
    Fnv1a four;
    four.Add(0x72616264, 4);
    EXPECT_EQ(four.Value(), HashOf("dbar"));
    Fnv1a eight;
    eight.Add(0x7261626f6f66);
    EXPECT_EQ(eight.Value(), HashOf(std::string_view("foobar\0\0", 8)));
}

} // namespace
} // namespace Wirefall::Testing
