// The apartment in which this thread calls the shell, shortcuts and the management service.
#pragma once

namespace ostrevin::windows {

/// Single-threaded, as the shell's objects want it. Must outlive every object that was made in it; a thread
/// may hold several.
class ComApartment {
  public:
    ComApartment();
    ~ComApartment();
    ComApartment(const ComApartment&) = delete;
    ComApartment& operator=(const ComApartment&) = delete;

  private:
    bool entered_;
};

}  // namespace ostrevin::windows
