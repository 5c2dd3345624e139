#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <zetcore/Export.h>
#include <zetcore/filesupport/paths/FolderState.h>

namespace zetcore::filesupport {

/// Looks at folders on a thread of its own, because a server that does not answer must not hold up a window.
/// The thread is left to itself when this ends before it. Main thread.
class ZETCORE_API FolderLook
{
  public:
    /// `done` is called on the main thread when all folders have been looked at, unless this has ended.
    FolderLook(std::vector<std::wstring> folders, std::function<void()> done);
    ~FolderLook();
    FolderLook(const FolderLook&) = delete;
    FolderLook& operator=(const FolderLook&) = delete;

    /// Empty for a folder that has not been looked at yet.
    std::optional<FolderState> StateOf(const std::wstring& folder) const;

  private:
    struct State;
    std::shared_ptr<State> state;
};

} // namespace zetcore::filesupport
