#pragma once

#include <memory>

#include <zetui/Export.h>
#include <zetui/nodes/KeyboardEvent.h>

namespace zetui::ui {

class UI_Node;

/// Sees keyboard events before the node that has the focus.
class ZETUI_API KeyboardEventFilter
{
  public:
    virtual ~KeyboardEventFilter();
    /// True: the event is consumed. `target` is the node that has the focus, or null.
    virtual bool UI_DoPreKeyboardEvent(UI_Node* target, const KeyboardEvent& event) = 0;
};

/// The nodes of the application. One object; main thread.
class ZETUI_API UI_NodeManager
{
  public:
    /// Never null; made on first use. With `forTests`, it is a fresh one without filters.
    static UI_NodeManager* Get(bool forTests);
    /// The last one added is asked first. With `onlyWhenFocused`, a filter that is a node is asked only while
    /// it or a descendant has the focus.
    void AddKeyboardEventFilterNode(KeyboardEventFilter* filter, bool onlyWhenFocused = false);
    void RemoveKeyboardEventFilterNode(KeyboardEventFilter* filter);
    /// The node whose widget has the focus, or which is its nearest ancestor; null when none of ours has it.
    UI_Node* GetFocusNode() const;

  private:
    UI_NodeManager();
    ~UI_NodeManager();
    struct State;
    std::unique_ptr<State> state;
};

/// Registers a filter for as long as it lives.
class ZETUI_API AddAndRemoveKeyboardEventFilterNode
{
  public:
    AddAndRemoveKeyboardEventFilterNode(UI_NodeManager* manager, KeyboardEventFilter* filter,
                                        bool onlyWhenFocused);
    ~AddAndRemoveKeyboardEventFilterNode();
    AddAndRemoveKeyboardEventFilterNode(const AddAndRemoveKeyboardEventFilterNode&) = delete;
    AddAndRemoveKeyboardEventFilterNode& operator=(const AddAndRemoveKeyboardEventFilterNode&) = delete;

  private:
    UI_NodeManager* manager;
    KeyboardEventFilter* filter;
};

} // namespace zetui::ui
