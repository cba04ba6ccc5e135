// Where libraries are loaded from while a program of the Windows edition runs.
#pragma once

namespace ostrevin {

/// From now on libraries that are named without a folder come from the system's folder alone, not from the
/// program's, nor from the current one. Windows 2000 and XP cannot be told so: there, those that Windows
/// itself loads late on behalf of this program are loaded now. To be called first of all.
void LoadLibrariesFromSystem();

/// Loads a library of the system's folder, if it is there, to stay. Who asks for it by its name gets this
/// one.
void LoadFromSystem(const wchar_t* library);

}  // namespace ostrevin
