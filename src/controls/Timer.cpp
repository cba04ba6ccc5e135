#include "controls/Timer.h"

#include "controls/ControlVisitor.h"

namespace ostrevin {

void Timer::Accept(ControlVisitor& visitor) {
    visitor.Visit(*this);
}

}  // namespace ostrevin
