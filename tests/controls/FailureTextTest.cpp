#include <gtest/gtest.h>
#include <new>
#include <stdexcept>

#include "controls/FailureText.h"

namespace ostrevin {
namespace {

TEST(FailureText, IsInPlainWordsWhereMemoryRanOut) {
    EXPECT_EQ(FailureText(std::bad_alloc()), "There is not enough memory.");
    EXPECT_EQ(FailureText(std::bad_array_new_length()), "There is not enough memory.");
    EXPECT_EQ(FailureText(std::runtime_error("error.log: it is a folder")), "error.log: it is a folder");
}

}  // namespace
}  // namespace ostrevin
