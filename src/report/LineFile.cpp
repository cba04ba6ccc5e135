#include "report/LineFile.h"

#include <utility>

namespace ostrevin {

LineFile::LineFile(Platform& platform, const std::string& path, Encode encode, Existing existing)
    : file_(platform.CreateOutputFile(path, existing)), encode_(std::move(encode)) {}

void LineFile::Write(std::initializer_list<std::string_view> parts) {
    constexpr std::size_t kMostWaiting = std::size_t{64} * 1024;
    for (const std::string_view part : parts) {
        waiting_ += part;
    }
    waiting_ += "\r\n";
    if (waiting_.size() >= kMostWaiting) {
        Flush();
    }
}

void LineFile::Close() {
    Flush();
    file_->Close();
}

void LineFile::Flush() {
    file_->Write(encode_(waiting_));
    waiting_.clear();
}

}  // namespace ostrevin
