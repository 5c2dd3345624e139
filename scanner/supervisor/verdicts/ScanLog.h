#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetcore/string/OutputTail.h>

namespace zetaudiofilterscan {

/// Keeps the output of plug-ins while they are scanned (standard output and error) and the scanner's notes
/// about them: one file for each run of the scanner, made when there is something to write, in a folder of
/// which the newest files are kept. A flood of output does not fill the disk. Scanning thread. Nothing
/// throws: a log that cannot be written is traced once, and the scan goes on without.
class ScanLog
{
  public:
    static constexpr std::size_t maxBytes = std::size_t{2} << 20;
    static constexpr std::size_t maxFiles = 20;

    /// `folder` is made with the first line. `nameEnd` tells this process's file from others of the same
    /// moment.
    ScanLog(std::wstring folder, std::string nameEnd);

    /// The output that follows is this plug-in's.
    void BeginEntity(const zetaudiofilterhost::PluginLocator& locator);
    /// Any bytes, cut anywhere.
    void Output(std::string_view bytes);
    /// A line of the scanner's own.
    void Note(const std::string& line);

    /// The end of what came since `BeginEntity`.
    const std::string& Tail() const noexcept { return tail.Text(); }
    /// The last line with anything on it since `BeginEntity`, as it came.
    std::string LastLine() const { return tail.LastLine(); }
    /// Empty while nothing has been written.
    const std::wstring& Path() const noexcept { return path; }

  private:
    void Write(std::string_view bytes);
    void Open();

    std::wstring folder;
    std::string nameEnd;
    std::wstring path;
    std::string entity;
    bool entityNamed = false;
    bool atLineStart = true;
    bool failed = false;
    std::size_t written = 0;
    zetcore::string::OutputTail tail;
};

/// Those of the names that are logs and go beyond the newest `keep`, oldest first.
std::vector<std::wstring> SurplusLogs(std::vector<std::wstring> names, std::size_t keep);

} // namespace zetaudiofilterscan
