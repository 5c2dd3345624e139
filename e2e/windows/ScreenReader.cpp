#include "ScreenReader.h"

#include <stdexcept>

#include <objbase.h>
#include <oleauto.h>

namespace {

// These are the numbers of UI Automation. Not every compiler has its headers.
constexpr int controlTypeProperty = 30003;
constexpr int nameProperty = 30005;
constexpr int frameworkProperty = 30024;

using Node = void*;
using NodeFromHandle = HRESULT WINAPI(HWND, Node*);
using GetPropertyValue = HRESULT WINAPI(Node, int, VARIANT*);
using ReleaseNode = BOOL WINAPI(Node);

void Require(HRESULT result, const std::string& call)
{
    if (FAILED(result))
        throw std::runtime_error(call + " failed: " + std::to_string(result));
}

/// The system's library for clients, with a node of it.
class WindowNode
{
  public:
    explicit WindowNode(HWND window) : release(Find<ReleaseNode>("UiaNodeRelease"))
    {
        Require(::CoInitializeEx(nullptr, COINIT_MULTITHREADED), "CoInitializeEx");
        try {
            Require(Find<NodeFromHandle>("UiaNodeFromHandle")(window, &node), "UiaNodeFromHandle");
        } catch (...) {
            ::CoUninitialize();
            throw;
        }
    }
    ~WindowNode()
    {
        release(node);
        ::CoUninitialize();
    }
    WindowNode(const WindowNode&) = delete;
    WindowNode& operator=(const WindowNode&) = delete;

    std::wstring Text(int property) const
    {
        VARIANT value = Value(property);
        std::wstring text = value.vt == VT_BSTR && value.bstrVal ? value.bstrVal : L"";
        ::VariantClear(&value);
        return text;
    }
    long Number(int property) const
    {
        VARIANT value = Value(property);
        const long number = value.vt == VT_I4 ? value.lVal : 0;
        ::VariantClear(&value);
        return number;
    }

  private:
    VARIANT Value(int property) const
    {
        VARIANT value;
        ::VariantInit(&value);
        Require(Find<GetPropertyValue>("UiaGetPropertyValue")(node, property, &value), "UiaGetPropertyValue");
        return value;
    }

    template<typename Function>
    static Function* Find(const char* name)
    {
        static const HMODULE library = ::LoadLibraryW(L"uiautomationcore.dll");
        const auto found = library ? ::GetProcAddress(library, name) : nullptr;
        if (!found)
            throw std::runtime_error(std::string("the system has no ") + name);
        return reinterpret_cast<Function*>(reinterpret_cast<void*>(found));
    }

    ReleaseNode* release;
    Node node = nullptr;
};

} // namespace

SeenWindow AskAsScreenReader(HWND window)
{
    const WindowNode node(window);
    return {node.Text(nameProperty), node.Number(controlTypeProperty), node.Text(frameworkProperty)};
}
