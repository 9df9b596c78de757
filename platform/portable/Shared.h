#pragma once

#include <utility>

namespace platform {

// A share in an object that counts its own: T has AddShare() and DropShare(), which ends T with the last one.
// Not for use by several threads.
template <typename T>
class Shared {
  public:
    Shared() = default;
    explicit Shared(T* object) : mObject(object) {
        if (mObject) mObject->AddShare();
    }
    Shared(const Shared& other) : Shared(other.mObject) {}
    Shared(Shared&& other) noexcept : mObject(std::exchange(other.mObject, nullptr)) {}
    Shared& operator=(Shared other) noexcept {
        std::swap(mObject, other.mObject);
        return *this;
    }
    ~Shared() {
        if (mObject) mObject->DropShare();
    }

    T* get() const { return mObject; }
    T* operator->() const { return mObject; }
    T& operator*() const { return *mObject; }
    explicit operator bool() const { return mObject != nullptr; }

  private:
    T* mObject = nullptr;
};

}  // namespace platform
