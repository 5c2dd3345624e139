#pragma once

#include <memory>
#include <string>

#include <zetcore/geom/RectT.h>
#include <zetui/Export.h>
#include <zetui/archives/NodeArchive.h>
#include <zetui/controls/UI_TextButton.h>
#include <zetui/dialogs/UI_Dialog.h>
#include <zetui/nodes/UI_NodeManager.h>
#include <zetui/nodes/UI_SubView.h>
#include <zetui/pixmill/SupplierInterface.h>
#include <zetui/screen/WindowVariant.h>
#include <zetui/utility/IntrusivePtr.h>
#include <zetui/utility/ResourceManager.h>

namespace zetui::ui {

struct PointF
{
    float x = 0, y = 0;
};
using DialogFlags = unsigned;

/// The resource of a layout archive, which is of type "xml": "NAME" for "Name", and in most skins the skin's
/// suffix behind it, such as "NAME.V7".
ZETUI_API std::string ResourceOfArchive(std::string archiveName);

/// A window whose controls come from a layout archive. A modal dialog disables the parent while it is open.
/// Return presses the button that has the focus; elsewhere, where the control has no use for it, it presses
/// the OK button. Escape presses the cancel button (or closes with the cancel response). Neither acts again
/// while it is kept down. Main thread.
class ZETUI_API UI_ArchivedDialog : public dialogs::UI_Dialog, public KeyboardEventFilter
{
  public:
    using RectF = zetcore::geom::RectT<float>;
    using RectI = zetcore::geom::RectT<int>;

    /// An `origin` of (0, 0) centres the window on its parent. A `modeless` window does not block its parent.
    /// The resource manager and the supplier are not owned. Throws `archive_error` for an archive that is
    /// missing or malformed.
    UI_ArchivedDialog(const pixmill::SupplierInterface* supplier, const utility::ResourceManager* resources,
                      const std::string& archiveName, const std::wstring& title, WindowVariant parent,
                      bool resizable, bool hasTitleBar, PointF origin, NodeFactory factory, bool modeless,
                      DialogFlags flags);

    /// Null when there is no such node.
    utility::IntrusivePtr<UI_Node> GetNodeForID(const std::string& id) const;
    UI_SubView* GetRootView() const noexcept;
    const pixmill::SupplierInterface* GetSupplier() const noexcept;
    /// The window's native handle, so that alerts can stand on top of it.
    HWND GetNativeWindow() const;

    void SetOkButton(const utility::IntrusivePtr<controls::UI_TextButton>& button);
    void SetCancelButton(const utility::IntrusivePtr<controls::UI_TextButton>& button);
    void SetMinimumSize(float width, float height);
    /// The position and size of the window's content on the screen. With `keepOnScreen`, a window that would
    /// be out of sight is moved back. With a `ControlStore`, which remembers that a window was maximised, a
    /// maximised window tells the place that it has when it is not.
    void UI_SetGlobalStructureRect(const RectI& rect, bool keepOnScreen);
    RectI UI_GetGlobalStructureRect() const;
    /// This node gets the focus when the modal run starts. Unless it is set, the first node of the Tab order
    /// does.
    void SetFirstFocusNode(const utility::IntrusivePtr<UI_Node>& node);
    utility::IntrusivePtr<UI_Node> GetFirstFocusNode() const;
    /// Closes with this response; the modal run returns it.
    void Close(Response response);
    Response GetResult() const noexcept;

    void UI_Show(bool show) override;
    bool UI_IsShown() const override;
    void BeginModal() override;
    void EndModal() override;
    void ModalDuring() override;
    void PostClose() override;
    Response RunModal() override;

    /// Called when the content's size has changed. The base runs the automatic layout.
    virtual void UI_SizeChanged(const RectF& bounds);
    bool UI_DoPreKeyboardEvent(UI_Node* target, const KeyboardEvent& event) override;

  protected:
    ~UI_ArchivedDialog() override;
    /// Gives every node its archived place, gives those with texts the room that they need, and makes the
    /// window large enough for that. The constructor has done it. A dialog that then hides controls, or shows
    /// others, does it again before it places anything itself.
    void FitToTexts();

  private:
    void CloseWhenPressed(const utility::IntrusivePtr<controls::UI_TextButton>& button, Response response);
    void FinishClosing();
    void ReportSize();

    struct ArchivedState;
    std::unique_ptr<ArchivedState> archived;
};

} // namespace zetui::ui
