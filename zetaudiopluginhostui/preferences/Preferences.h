#pragma once

#include <functional>
#include <string>

#include <zetcore/filesupport/paths/File.h>
#include <zetui/pixmill/SupplierInterface.h>
#include <zetui/screen/WindowVariant.h>

namespace zetaudiopluginhostui {

/// The registry, the banned list and the list of unsupported plug-ins as files of the preferences folder.
///
/// An object serves one operation: a scan, a run of the manager, the check at the start. A change that the
/// folder does not let through ends nothing. The object remembers it until the operation says that the user
/// is told, with one caution for all that have failed by then. Main thread.
class Preferences
{
  public:
    /// Tells with the caution that the folder cannot be accessed. The supplier is not owned and must outlive
    /// this; null is allowed for both.
    Preferences(const zetui::pixmill::SupplierInterface* supplier, HWND parent);
    /// For a part of a larger operation, which tells the user itself: `tell` is called in the caution's
    /// place.
    explicit Preferences(std::function<void()> tell);

    static zetcore::filesupport::File RegistryFile();
    static zetcore::filesupport::File BannedListFile();
    static zetcore::filesupport::File UnsupportedListFile();

    // Results and exceptions are those of the registry and of the banned list.
    static bool LoadRegistry();
    static bool LoadBannedList();
    static bool LoadUnsupportedList();

    // False when the folder did not let it.
    bool SaveRegistry();
    bool SaveBannedList();
    bool WriteUnsupportedList(const std::string& bytes);
    /// Any other work on files of the folder. Only a `file_exception` counts as the folder's fault, here and
    /// in the saves; other exceptions pass.
    bool Try(const std::function<void()>& work);
    /// For a failure that was caught elsewhere.
    void NoteFailure() noexcept { hasFailed = true; }

    /// True when there is something to tell the user.
    bool HasFailed() const noexcept { return hasFailed; }
    /// Tells the user when something has failed since this was called last. Returns when the caution has been
    /// dismissed.
    void TellUser();
    /// The same, but nothing after the first caution.
    void TellUserOnce();

  private:
    std::function<void()> tell;
    bool hasFailed = false;
    bool hasTold = false;
};

} // namespace zetaudiopluginhostui
