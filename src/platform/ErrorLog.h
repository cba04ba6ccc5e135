// The log that takes one line a call. The file is opened and closed for each, so that it is never held.
#pragma once

#include <string>

#include "platform/Platform.h"

namespace ostrevin {

class ErrorLog {
  public:
    /// The log file is "error.log" in the application folder until FileName is set. Without a name, as where
    /// nothing may be kept, lines are not written.
    explicit ErrorLog(Platform& platform);

    [[nodiscard]] const std::string& FileName() const { return fileName_; }
    void SetFileName(const std::string& fileName) { fileName_ = fileName; }
    /// Whether every line begins with the date and time.
    [[nodiscard]] bool AddDate() const { return addDate_; }
    void SetAddDate(bool addDate) { addDate_ = addDate; }

    /// Appends text and CR LF. Raises RuntimeError when the file cannot be written. PlainLine makes one line
    /// of text that comes from the evidence.
    void WriteLog(const std::string& text);

  private:
    Platform& platform_;
    std::string fileName_;
    bool addDate_ = false;
};

}  // namespace ostrevin
