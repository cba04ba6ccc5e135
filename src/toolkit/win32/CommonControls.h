// Which common controls of Windows the program got.
#pragma once

namespace ostrevin::win32 {

/// Whether they are those of version 6, which Windows XP brought: asked for by the manifest, and not there on
/// Windows 2000.
[[nodiscard]] bool HasCommonControls6();

}  // namespace ostrevin::win32
