#include "filesupport/content/AppendHandle.h"

#include <windows.h>

#include <zetcore/filesupport/handles/Handle.h>
#include <zetcore/filesupport/handles/SystemError.h>
#include <zetcore/filesupport/paths/FileException.h>

#include "filesupport/paths/CheckedPath.h"
#include "filesupport/paths/SharedOpening_win.h"

namespace zetcore::filesupport {

struct AppendHandle::Opened
{
    Handle file;
};

AppendHandle::AppendHandle(std::wstring filePath)
    : path(std::move(filePath)), opened(std::make_unique<Opened>())
{
    constexpr const char* operation = "open for appending";
    // With the right to append and without the right to write, the system itself moves every write to the
    // end.
    opened->file = Handle(::CreateFileW(SystemPath(ToCheckedPath(operation, path)).c_str(),
                                        FILE_APPEND_DATA | SYNCHRONIZE,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                        OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!opened->file.IsOpen())
        throw file_exception(operation, path, LastSystemError());
}

AppendHandle::~AppendHandle() = default;

void AppendHandle::Write(std::string_view bytes)
{
    if (const std::error_code error = opened->file.WriteWhole(bytes))
        throw file_exception("append to", path, error);
}

} // namespace zetcore::filesupport
