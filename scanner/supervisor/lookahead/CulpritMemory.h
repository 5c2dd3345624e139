#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <zetaudiopluginhost/BanReasons.h>
#include <zetcore/filesupport/paths/Dir.h>
#include <zetcore/filesupport/paths/File.h>

#include "supervisor/process/ProcessIdentity.h"

namespace zetaudiofilterscan {

/// Hands what a scanner has found out about plug-ins that the host has not asked for yet to the scanner that
/// follows it in the same scan: the same host, with the same settings file. It is a file in the user's
/// runtime folder, which is there from the end of one scanner to the begin of the next only. A second file,
/// the scanner's sign, has no content and is there while the scanner is at work. It goes when the scanner
/// ends by itself, and a host that ends its scanner deletes it. So a sign without its process says that the
/// scanner was killed. Nothing throws: without the memory, plug-ins are tried once more. Scanning thread.
class CulpritMemory
{
  public:
    /// The host starts the next scanner at once. What is older is another scan's, which was cancelled while
    /// no scanner ran.
    static constexpr std::chrono::minutes longestPause{2};

    /// Deletes what was left for hosts that have ended, and the signs of this scan's scanners that have
    /// ended. Without a host that can be told from others, nothing is remembered. `scanner` is the one that
    /// works with this; without it there is no sign.
    CulpritMemory(const std::optional<ProcessIdentity>& host, const std::wstring& pluginSettingsPath,
                  const std::optional<ProcessIdentity>& scanner);

    /// True when a scanner of this host has left something, whichever scan it was for. It costs one look at a
    /// folder.
    static bool IsThereFor(const std::optional<ProcessIdentity>& host);

    /// Takes what the scanner before this one has left: those whose files are still the same. Afterwards it
    /// is gone. What cannot be read, or is not this user's, blames nobody.
    std::vector<zetaudiopluginhost::BanReason> Take() const;
    /// Leaves all of them for the next scanner, in place of what was left before. To be called right before
    /// this scanner ends because of a plug-in.
    void Leave(std::vector<zetaudiopluginhost::BanReason> culprits) const;
    /// The scan is over, or its scanner ends by itself.
    void Forget() const;

    /// To be called that often while workers are at work.
    static constexpr std::chrono::milliseconds signOfLife{250};
    void NoteAtWork() const;
    /// True when the scanner before this one had ended a moment ago, when this began, and had not done so by
    /// itself.
    bool WasPredecessorKilled() const noexcept { return predecessorWasKilled; }

  private:
    void TakeSignsOfEnded(const zetcore::filesupport::Dir& folder, const std::string& beginning);

    /// Without a name when nothing can be remembered.
    zetcore::filesupport::File file;
    zetcore::filesupport::File sign;
    bool predecessorWasKilled = false;
};

} // namespace zetaudiofilterscan
