#pragma once

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace zetaudiopluginhost {

/// Keeps the libraries that modules bring along loaded, as they are in a host that has several plug-ins open.
/// Many plug-ins share them, and to load them anew for each takes longer than all the rest. One thread.
/// Windows keeps none.
class SharedLibraries
{
  public:
    enum class Keeps
    {
        /// All of them, until the process ends.
        All,
        /// Until the process ends, those in the folders in which the libraries of any program are looked for.
        /// The others until `LetGo`: a process that lives long must not keep a plug-in's own, because the
        /// plug-in may be replaced meanwhile, and needs its new ones then.
        Systems,
    };
    explicit SharedLibraries(Keeps which);
    ~SharedLibraries();
    SharedLibraries(const SharedLibraries&) = delete;
    SharedLibraries& operator=(const SharedLibraries&) = delete;

    /// Keeps the libraries that are loaded now, but never this module. Call it before the module is unloaded.
    void KeepAllBut(const std::wstring& modulePath);
    /// This unloads those that nobody needs, in the order in which they were loaded: a library comes before
    /// those that it needs.
    void LetGo();

  private:
    struct Held
    {
        std::string name;
        void* handle;
    };
    bool IsSystems(const std::string& library) const;

    /// Empty when all are kept until the process ends.
    std::optional<std::set<std::filesystem::path>> systemFolders;
    /// The names of those that are kept, as the system gives them.
    std::set<std::string> kept;
    /// Those of them that are not kept for ever.
    std::vector<Held> held;
};

} // namespace zetaudiopluginhost
