#include "platform/windows/ComApartment.h"

#include <windows.h>
#include <ole2.h>

namespace ostrevin::windows {

// Where it fails, each object that is asked for fails, too, and says so there.
ComApartment::ComApartment() : entered_(SUCCEEDED(OleInitialize(nullptr))) {}

ComApartment::~ComApartment() {
    if (entered_) {
        OleUninitialize();
    }
}

}  // namespace ostrevin::windows
