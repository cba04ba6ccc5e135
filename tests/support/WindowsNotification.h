// The one class of GoogleTest that needs std::mutex, which the compiler's library lacks where threads are
// Windows' own: GoogleTest takes this one in its place. Included ahead of everything else.
#pragma once

#include <atomic>

namespace testing::internal {

class Notification {
  public:
    void Notify() { notified_ = true; }
    void WaitForNotification() const {
        while (!notified_) {
        }
    }

  private:
    std::atomic<bool> notified_ = false;
};

}  // namespace testing::internal
