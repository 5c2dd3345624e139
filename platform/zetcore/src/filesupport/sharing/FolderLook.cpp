#include <zetcore/filesupport/sharing/FolderLook.h>

#include <map>
#include <mutex>
#include <thread>
#include <utility>

#include <zetcore/threads/MainThread.h>

namespace zetcore::filesupport {

struct FolderLook::State
{
    /// Used on the main thread only.
    std::function<void()> done;
    std::mutex mutex;
    std::map<std::wstring, FolderState> found;
};

FolderLook::FolderLook(std::vector<std::wstring> folders, std::function<void()> done)
    : state(std::make_shared<State>())
{
    state->done = std::move(done);
    if (folders.empty())
        return;
    std::thread([weak = std::weak_ptr(state), list = std::move(folders)] {
        for (const std::wstring& folder : list) {
            const FolderState found = LookAtFolder(folder);
            const auto known = weak.lock();
            if (!known)
                return;
            const std::lock_guard lock(known->mutex);
            known->found.insert_or_assign(folder, found);
        }
        threads::AsyncCallFromMainThread(
            [weak] {
                if (const auto known = weak.lock(); known && known->done)
                    known->done();
            },
            0);
    }).detach();
}

/// The thread may hold the state a little longer. The function must not go there.
FolderLook::~FolderLook()
{
    state->done = nullptr;
}

std::optional<FolderState> FolderLook::StateOf(const std::wstring& folder) const
{
    const std::lock_guard lock(state->mutex);
    const auto found = state->found.find(folder);
    return found == state->found.end() ? std::nullopt : std::optional(found->second);
}

} // namespace zetcore::filesupport
