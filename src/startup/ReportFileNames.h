// Names of files for reports, made from the names of accounts.
#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>

namespace ostrevin {

class ReportFileNames {
  public:
    /// A name with ".htm" behind it that was not given before, letters of both cases being the same: the
    /// account's own; with its identifier behind it when that is taken, and a number when that is, too. What
    /// some file system does not take in a name is "_", the names of Windows' devices begin with one, and a
    /// very long name is cut.
    std::string For(const std::string& account, const std::string& sid);

  private:
    std::set<std::string> taken_;                 // in upper case
    std::map<std::string, std::size_t> numbers_;  // given so far behind such a name
};

}  // namespace ostrevin
