#pragma once

#include <memory>
#include <string>

#include <zetcore/geom/RectT.h>
#include <zetui/Export.h>
#include <zetui/archives/NodeFactory.h>
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

/// A window whose controls come from a layout archive. "Name" is the resource "NAME" of type "xml", or
/// "NAME.V7" in the V7 skin. A modal dialog disables the parent while it is open. Return presses the OK
/// button, Escape the cancel button (or closes with the cancel response). Main thread.
class ZETUI_API UI_ArchivedDialog : public dialogs::UI_Dialog, public KeyboardEventFilter
{
  public:
    using RectF = zetcore::geom::RectT<float>;
    using RectI = zetcore::geom::RectT<int>;

    /// `resizable`, `hasTitleBar`; `origin` (0, 0) centres it on the parent; `modeless` windows do not block.
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
    /// The window's native handle; for alerts on top of it.
    HWND GetNativeWindow() const;

    void SetOkButton(const utility::IntrusivePtr<controls::UI_TextButton>& button);
    void SetCancelButton(const utility::IntrusivePtr<controls::UI_TextButton>& button);
    void SetMinimumSize(float width, float height);
    /// The whole window on the screen: position and size of its content. With `keepOnScreen`, moved back
    /// where it would be out of sight.
    void UI_SetGlobalStructureRect(const RectI& rect, bool keepOnScreen);
    RectI UI_GetGlobalStructureRect() const;
    /// Gets the focus when the modal run starts: the first node of the Tab order unless set.
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

    /// The content's size has changed: the automatic layout runs.
    virtual void UI_SizeChanged(const RectF& bounds);
    bool UI_DoPreKeyboardEvent(UI_Node* target, const KeyboardEvent& event) override;

  protected:
    ~UI_ArchivedDialog() override;
    /// Gives every node its archived place, the texts of those that show the room that they need, and the
    /// window the size for it. The constructor has done it; a dialog that then hides controls or shows others
    /// does it again before it places anything itself.
    void FitToTexts();

  private:
    void CloseWhenPressed(const utility::IntrusivePtr<controls::UI_TextButton>& button, Response response);
    void FinishClosing();
    void ReportSize();

    struct ArchivedState;
    std::unique_ptr<ArchivedState> archived;
};

} // namespace zetui::ui
