#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace zetcore::filesupport {

/// A file open for appending, private to the user when it is new. Several processes may append to it at once.
class AppendHandle
{
  public:
    /// Throws `file_exception`.
    explicit AppendHandle(std::wstring path);
    ~AppendHandle();
    AppendHandle(const AppendHandle&) = delete;
    AppendHandle& operator=(const AppendHandle&) = delete;

    /// In one write where the system takes it. Throws `file_exception`.
    void Write(std::string_view bytes);

  private:
    struct Opened;
    std::wstring path;
    std::unique_ptr<Opened> opened;
};

} // namespace zetcore::filesupport
