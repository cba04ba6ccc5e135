// What the tests of the program's own files on any host share.
#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>

#include "platform/Platform.h"
#include "platform/RuntimeError.h"

namespace ostrevin {

/// What a call that writes a file raises; "" when it raises nothing.
template <typename Call>
[[nodiscard]] std::string FailureOf(Call call) {
    try {
        call();
        return {};
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), RuntimeError::kPathFileAccess);
        return error.what();
    }
}

inline void WriteOutput(Platform& platform, const std::string& path, std::string_view text) {
    const std::unique_ptr<OutputFile> file = platform.CreateOutputFile(path);
    file->Write(text.substr(0, 1));
    file->Write(text.substr(1));
    file->Close();
}

}  // namespace ostrevin
