#pragma once

#include <memory>
#include <string>

#include <zetui/utility/OS_ResourceManager.h>

namespace zetaudiopluginhostui {

/// A module with a layout archive of its own, one of testing/archives. Throws `std::runtime_error` where
/// there is none of the name.
class ArchiveModule
{
  public:
    explicit ArchiveModule(const std::string& archive);
    ~ArchiveModule();
    ArchiveModule(const ArchiveModule&) = delete;
    ArchiveModule& operator=(const ArchiveModule&) = delete;

    zetui::utility::ModuleHandle Handle() const;

  private:
    struct State;
    std::unique_ptr<State> state;
};

} // namespace zetaudiopluginhostui
