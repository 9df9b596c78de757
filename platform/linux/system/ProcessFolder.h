#pragma once

#include <sys/types.h>

#include <memory>
#include <string>

#include "platform/linux/Handles.h"

namespace platform {

// The private folder of this process's temporary files. It holds a file that is locked while the process
// lives, so that a later process can tell a folder in use from one left behind. The folder is removed at the
// end of the process that made it, not at the end of one forked off.
class ProcessFolder {
  public:
    ProcessFolder();
    ~ProcessFolder() { remove(); }

    // Makes the folder, also when somebody tidied it away. Empty when it cannot be made anywhere.
    const std::string& path();

    // Writes a file into the folder, for this user alone. A folder that does not take it is given up for one
    // in the next place that does. Returns false when there is none.
    bool write(const std::string& name, const std::string& data);

  private:
    bool make(const std::string& parent);
    void remove();

    std::string mPath;
    pid_t mOwner = 0;
    std::unique_ptr<FileDescriptor> mLock;
};

}  // namespace platform
