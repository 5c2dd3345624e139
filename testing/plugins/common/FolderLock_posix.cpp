#include "FolderLock.h"

#include <string>

#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

namespace zettestplugin {

namespace {

int file = -1;

bool Lock(int command)
{
    Dl_info module{};
    ::dladdr(&file, &module);
    const std::string path = module.dli_fname;
    file = ::open((path.substr(0, path.rfind('/') + 1) + "folder.lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC,
                  0600);
    // This kind of lock is the process's: two modules in it do not keep each other out.
    struct flock all
    {};
    all.l_type = F_WRLCK;
    return ::fcntl(file, command, &all) == 0;
}

} // namespace

bool TakeFolderLock()
{
    return Lock(F_SETLK);
}

void WaitForFolderLock()
{
    Lock(F_SETLKW);
}

void GiveUpFolderLock()
{
    ::close(file);
}

} // namespace zettestplugin
