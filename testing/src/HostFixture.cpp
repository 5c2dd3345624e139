#include <zettesting/HostFixture.h>

#include <mutex>

#include <zetcore/debug/DebugDatabase.h>
#include <zetcore/debug/ResetTrace.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/filesupport/paths/Dir.h>
#include <zetcore/threads/ClearQueuedCalls.h>
#include <zetcore/threads/MainThread.h>

namespace zettesting {

namespace {

std::string MakeFolder(const std::filesystem::path& path)
{
    std::filesystem::create_directory(path);
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    return path.string();
}

} // namespace

HostFixture::HostFixture()
    : prefs(folder / "prefs"), traceLines(std::make_shared<std::vector<std::string>>()),
      runtimeFolder("XDG_RUNTIME_DIR", MakeFolder(folder / "runtime")),
      debugDatabase("ZET_DEBUG_DATABASE", std::nullopt), trace("ZET_TRACE", std::nullopt)
{
    MakeFolder(prefs);
    zetcore::filesupport::Dir::SetPrefDir(ToWide(prefs));
    zetcore::debug::DebugDatabase::Instance().Reset();
    zetcore::debug::ResetTrace();
    zetcore::debug::SetTraceSink([lines = traceLines, mutex = std::make_shared<std::mutex>()](
                                     int level, std::string_view category, std::string_view text) {
        const std::lock_guard lock(*mutex);
        lines->push_back(std::to_string(level) + " " + std::string(category) + " " + std::string(text));
    });
    zetcore::threads::ClearQueuedCalls();
}

HostFixture::~HostFixture()
{
    zetcore::threads::ClearQueuedCalls();
    zetcore::threads::RegisterMainThread(nullptr);
    zetcore::debug::SetTraceSink({});
    zetcore::debug::ResetTrace();
    zetcore::filesupport::Dir::SetPrefDir({});
    zetcore::filesupport::commondirs::SetExecutableDir({});
    zetcore::debug::DebugDatabase::Instance().Reset();
}

} // namespace zettesting
