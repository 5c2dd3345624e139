#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace zetcore::filesupport {

/// A file that is open for appending. A new one is private to the user. Several processes may append to it at
/// once.
class AppendHandle
{
  public:
    /// Throws `file_exception`.
    explicit AppendHandle(std::wstring path);
    ~AppendHandle();
    AppendHandle(const AppendHandle&) = delete;
    AppendHandle& operator=(const AppendHandle&) = delete;

    /// Appends the bytes in one write where the system takes them so. Throws `file_exception`.
    void Write(std::string_view bytes);

  private:
    struct Opened;
    std::wstring path;
    std::unique_ptr<Opened> opened;
};

} // namespace zetcore::filesupport
