// ExtraData: the blocks that follow the string data of a shell link, up to the terminal block.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/volume/lnk/Bytes.h"

namespace ostrevin::lnk {

/// SpecialFolderDataBlock: the target lies in one of the system's special folders.
struct SpecialFolder {
    std::uint32_t csidl = 0;
    std::uint32_t offset = 0;  ///< into LinkTargetIDList, of the first item inside the folder
};

/// The blocks that have to do with the target or the icon.
struct ExtraData {
    std::string environmentTarget;  ///< EnvironmentVariableDataBlock; the variables as they stand
    std::string environmentIcon;    ///< IconEnvironmentDataBlock, likewise
    std::optional<SpecialFolder> specialFolder;
};

/// Reads the blocks; the first one that is not sound ends them.
[[nodiscard]] ExtraData ReadExtraData(Bytes blocks, const AnsiDecoder& decode);

}  // namespace ostrevin::lnk
