#pragma once

#include <stdexcept>
#include <string>

namespace zetaudiopluginhost {

/// The system could not load a library; the message is the system's, in UTF-8.
class ModuleLoadError : public std::runtime_error
{
  public:
    ModuleLoadError(const std::string& message, bool hasCodeRun)
        : std::runtime_error(message), codeHasRun(hasCodeRun)
    {}
    /// The library's own initialisers refused or failed, which some systems tell as an error.
    bool CodeHasRun() const noexcept { return codeHasRun; }

  private:
    bool codeHasRun = false;
};

/// A library loaded into this process. It stays loaded unless `Unload` is called: the code of a module that
/// did not end in order may still be running, and taking it away would kill the process.
class LoadedModule
{
  public:
    /// Throws `ModuleLoadError`.
    explicit LoadedModule(const std::wstring& path);
    LoadedModule(const LoadedModule&) = delete;
    LoadedModule& operator=(const LoadedModule&) = delete;

    /// The exported function, or null.
    template<class Function>
    Function Find(const char* name) const
    {
        return reinterpret_cast<Function>(FindAddress(name));
    }
    /// The system's handle of the library, which the entry functions of some formats are given.
    void* NativeHandle() const noexcept { return handle; }
    void Unload();

  private:
    using AnyFunction = void (*)();
    AnyFunction FindAddress(const char* name) const;

    void* handle = nullptr;
};

} // namespace zetaudiopluginhost
