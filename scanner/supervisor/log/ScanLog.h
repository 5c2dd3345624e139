#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <zetaudiofilterhost/PluginLocator.h>

namespace zetaudiofilterscan {

/// A file with the output of plug-ins while they are scanned (see `EntityOutput`) and the scanner's notes
/// about them: one for each run of the scanner, made when there is something to write, in a folder of which
/// the newest files are kept. A flood of output does not fill the disk. Scanning thread. Nothing throws: a
/// log that cannot be written is traced once, and the scan goes on without.
class ScanLog
{
  public:
    static constexpr std::size_t maxBytes = std::size_t{2} << 20;
    static constexpr std::size_t maxFiles = 20;

    /// `folder` is made with the first line. `nameEnd` tells this process's file from others of the same
    /// moment.
    ScanLog(std::wstring folder, std::string nameEnd);

    /// A line that says whose output follows.
    void Heading(const std::string& line);
    /// The last writer, so that several can take turns.
    const std::string& LastHeading() const noexcept { return lastHeading; }
    /// Any bytes, cut anywhere.
    void Output(std::string_view bytes);
    /// A line of the scanner's own.
    void Note(const std::string& line);

    /// Empty while nothing has been written.
    const std::wstring& Path() const noexcept { return path; }

  private:
    void WriteLine(const char* mark, const std::string& line);
    void Write(std::string_view bytes);
    void Open();

    std::wstring folder;
    std::string nameEnd;
    std::wstring path;
    std::string lastHeading;
    bool atLineStart = true;
    bool failed = false;
    std::size_t written = 0;
};

/// The plug-in in a line of the log or the trace (UTF-8).
std::string NameForLog(const zetaudiofilterhost::PluginLocator& locator);
/// The last ones of them, separated by commas, after the number of those before.
std::string NamesForLog(const std::vector<zetaudiofilterhost::PluginLocator>& locators);

/// The names of the logs that go beyond the newest `keep`, oldest first. Other names are passed over.
std::vector<std::wstring> SurplusLogs(std::vector<std::wstring> names, std::size_t keep);

} // namespace zetaudiofilterscan
