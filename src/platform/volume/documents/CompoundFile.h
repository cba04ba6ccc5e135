// The directory of a compound file (OLE2), the container of older office documents and of much else.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/Platform.h"

namespace ostrevin::documents {

struct CompoundDirectory {
    std::string rootClass;             ///< the 16 bytes of the root's class identifier
    std::vector<std::string> streams;  ///< the names of all streams; a character other than ASCII is "?"
};

/// None when the file is no compound file. Of a directory of more than 1,024 sectors the first ones count.
[[nodiscard]] std::optional<CompoundDirectory> ReadCompoundDirectory(InputFile& file);

}  // namespace ostrevin::documents
