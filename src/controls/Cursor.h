// Mouse cursors of the system.
#pragma once

namespace ostrevin {

/// The sizing cursors, by the numbers of their Windows resources.
enum class CursorShape {
    SizeWestEast = 32644,
    SizeNorthSouth = 32645,
};

/// A cursor that the toolkit has loaded; it goes with the object.
class Cursor {
  public:
    Cursor() = default;
    Cursor(const Cursor&) = delete;
    Cursor& operator=(const Cursor&) = delete;
    virtual ~Cursor() = default;
};

}  // namespace ostrevin
