// The report: what one account did, as one HTML file with a table for each section that is wanted.
//
// The file is in the machine's ANSI code page. Its text is a format that others read, and is kept to the
// byte: nothing that comes from an account is escaped, the HEAD element is never closed, and the last cell of
// a program's row ends in "</TD".
#pragma once

#include <cstdint>
#include <string>

#include "accounts/AccountList.h"
#include "platform/Platform.h"
#include "report/ReportSection.h"

namespace ostrevin {

/// Whoever wants a report: says what is in it, and hears how far it is.
class ReportClient {
  public:
    ReportClient() = default;
    ReportClient(const ReportClient&) = delete;
    ReportClient& operator=(const ReportClient&) = delete;
    virtual ~ReportClient() = default;

    /// Asked for the line of links, and again when it is the section's turn.
    virtual bool Includes(ReportSection section) = 0;
    /// The file is open.
    virtual void Opened() = 0;
    /// After each entry, whether it has a row or not: percent of the whole report. Pending messages of the
    /// window are to be handled then, but for those sections that are written without a pause.
    virtual void Progress(float percent, bool handleMessages) = 0;
};

class HtmlReport {
  public:
    HtmlReport(Platform& platform, AccountList& accounts, ReportClient& client)
        : platform_(platform), accounts_(accounts), client_(client) {}

    /// Writes the report on the account with an index to a file. Raises RuntimeError when the file cannot be
    /// written; what was written before stays in it.
    void Create(std::int32_t accountIndex, const std::string& path, Existing existing = Existing::Replace);

  private:
    Platform& platform_;
    AccountList& accounts_;
    ReportClient& client_;
};

}  // namespace ostrevin
