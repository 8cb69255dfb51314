#include "support/CapturedOutput.h"

#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <iostream>
#include <string>
#include <unistd.h>

namespace Wirefall::Testing {
namespace {

TEST(CapturedOutput, HasWhatIsPrintedByAnyWay) {
    const CapturedOutput output;
    EXPECT_EQ(output.Text(), "");
    std::cout << "stream ";
    std::printf("%s ", "file");
    EXPECT_EQ(output.Text(), "stream file ");
    EXPECT_EQ(write(STDOUT_FILENO, "descriptor ", 11), 11);
    std::cout << std::string(10000, 'x');
    EXPECT_EQ(output.Text(), "stream file descriptor " + std::string(10000, 'x'));
}

TEST(CapturedOutput, IsNotWhatIsPrintedAsAnError) {
    const CapturedOutput output;
    const CapturedErrors errors;
    std::cerr << "wrong";
    std::cout << "right";
    EXPECT_EQ(errors.Text(), "wrong");
    EXPECT_EQ(output.Text(), "right");
}

TEST(CapturedOutput, EndsWithItsScope) {
    const CapturedErrors errors;
    {
        const CapturedErrors inner;
        std::cerr << "inside";
    }
    std::cerr << "outside";
    EXPECT_EQ(errors.Text(), "outside");
}

TEST(CapturedOutput, IsShownWhenTheTestHasFailed) {
    const CapturedErrors quietErrors;
    const CapturedOutput quiet;
    EXPECT_TRUE(HoldsInChild([] {
        const CapturedErrors shown;
        {
            const CapturedErrors kept;
            std::cerr << "not this, ";
        }
        {
            const CapturedErrors kept;
            std::cerr << "but this";
            ADD_FAILURE() << "in the child only";
        }
        return shown.Text() == "but this";
    }));
}

} // namespace
} // namespace Wirefall::Testing
