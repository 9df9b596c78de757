#pragma once

#include <glib-object.h>
#include <unistd.h>

#include <string>

#include "platform/linux/Handle.h"

namespace platform {

// Owners of the objects that C libraries hand out.

// One reference to a GObject.
template <typename T>
using ObjectRef = Handle<T, g_object_unref>;

// A string allocated by GLib.
using GText = Handle<char, g_free>;

using ErrorRef = Handle<GError, g_error_free>;
using KeyFileRef = Handle<GKeyFile, g_key_file_unref>;

inline std::string toString(const GText& text) { return text ? text.get() : ""; }

class FileDescriptor {
  public:
    explicit FileDescriptor(int number) : mNumber(number) {}
    ~FileDescriptor() { close(); }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;

    bool isOpen() const { return mNumber >= 0; }
    int number() const { return mNumber; }

    // Returns false when the system reports a write error only now.
    bool close() {
        const bool closed = !isOpen() || ::close(mNumber) == 0;
        mNumber = -1;
        return closed;
    }

  private:
    int mNumber;
};

}  // namespace platform
