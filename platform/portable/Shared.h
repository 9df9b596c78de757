#pragma once

#include <utility>

namespace platform {

// A share in an object that counts its shares: T has AddShare() and DropShare(), which destroys the object
// along with its last share. Not thread-safe.
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
