// What the host's mounts make of a file: one file system can be mounted at several places, as a whole or from
// a folder of it on, so that the folders above a path do not tell all.
#pragma once

namespace ostrevin {

/// Whether a file, by its descriptor, lies in a folder or below it, by any mount. False where the system does
/// not tell.
[[nodiscard]] bool LiesBelowByMounts(int file, int folder);

}  // namespace ostrevin
