#include "filesupport/content/AppendHandle.h"

#include <fcntl.h>
#include <unistd.h>

#include <zetcore/debug/faults/FaultPoint.h>
#include <zetcore/filesupport/handles/Descriptor.h>
#include <zetcore/filesupport/handles/SystemError.h>
#include <zetcore/filesupport/paths/FileException.h>

#include "filesupport/paths/CheckedPath.h"

namespace zetcore::filesupport {

struct AppendHandle::Opened
{
    Descriptor file;
};

AppendHandle::AppendHandle(std::wstring filePath)
    : path(std::move(filePath)), opened(std::make_unique<Opened>())
{
    constexpr const char* operation = "open for appending";
    opened->file = Descriptor(
        ::open(ToCheckedPath(operation, path).c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0600));
    if (!opened->file.IsOpen())
        throw file_exception(operation, path, LastSystemError());
}

AppendHandle::~AppendHandle() = default;

void AppendHandle::Write(std::string_view bytes)
{
    const bool faults = debug::FaultsAreOn();
    const std::string place = faults ? "append." + ToNativePath(path).filename().string() : std::string();
    if (const std::error_code error = faults ? debug::FaultError(place + ".write") : std::error_code())
        throw file_exception("append to", path, error);
    if (const std::error_code error = opened->file.WriteWhole(bytes))
        throw file_exception("append to", path, error);
    if (faults)
        debug::FaultPoint(place + ".done");
}

} // namespace zetcore::filesupport
