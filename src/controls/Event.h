// What a control tells the form that it stands on.
#pragma once

#include <functional>
#include <utility>

namespace ostrevin {

/// An event with at most one handler; a form assigns it, the control raises it.
template <typename... Arguments>
class Event {
  public:
    using Handler = std::function<void(Arguments...)>;
    Event& operator=(Handler handler) {
        handler_ = std::move(handler);
        return *this;
    }
    void Raise(Arguments... arguments) const {
        if (handler_) {
            handler_(arguments...);
        }
    }

  private:
    Handler handler_;
};

}  // namespace ostrevin
