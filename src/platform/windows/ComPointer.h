// A counted reference to a COM object.
#pragma once

#include <utility>

namespace ostrevin::windows {

/// Null when it refers to nothing.
template <typename Interface>
class ComPointer {
  public:
    ComPointer() = default;
    ComPointer(const ComPointer& other) : object_(other.object_) {
        if (object_ != nullptr) {
            object_->AddRef();
        }
    }
    ComPointer(ComPointer&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    ComPointer& operator=(ComPointer other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~ComPointer() {
        if (object_ != nullptr) {
            object_->Release();
        }
    }

    [[nodiscard]] Interface* Get() const { return object_; }
    Interface* operator->() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }

    /// Where a call stores the reference that it hands over; only for a null one.
    [[nodiscard]] Interface** Put() { return &object_; }
    /// The same for the calls that take an interface's identifier.
    [[nodiscard]] void** PutVoid() { return reinterpret_cast<void**>(&object_); }

  private:
    Interface* object_ = nullptr;
};

}  // namespace ostrevin::windows
