// A window's described content as an IAccessible, the interface of Microsoft Active Accessibility.
//
// The parts of a table are simple elements: numbers, from 1, and no objects of their own. So 32,766
// of them cost nothing until they are asked for. What a content does not say, and the window's own
// controls, come from the standard object, which the system has for every window.
//
// UI Automation, which newer clients use, reads IAccessible through a bridge of the system's. What
// is lacking is the table's geometry: cells have names, states, places and neighbours, but no row
// and column numbers. Nor are these told as a cell's value, since that would be read aloud at every
// step. The table's description says how many there are.
//
// IAccessible has one action, and no verb to mark a cell with. That action is showing the cell
// alone, which changes nothing in the population; the key that marks is told as the cell's
// shortcut.
#pragma once

#include "platform/accessible.h"

#include <memory>
#include <new>
#include <type_traits>
#include <utility>

#include <oleacc.h>

namespace platform {

// What a window has described. Clients hold objects for as long as they like, so an object knows
// its window through this only.
struct DescribedWindow {
    HWND window;  // null once it is destroyed
    DWORD thread; // the one of its message loop, which alone may ask the content
    std::weak_ptr<AccessibleContent> content;
};

// What objects answer to clients once the window or its content is gone.
constexpr HRESULT kGone = CO_E_OBJNOTCONNECTED;

// Give a client a value. S_FALSE says that there is none.
HRESULT give(BSTR* out, const std::string& utf8);
HRESULT give(VARIANT* out, LONG number);
void clear(BSTR* out);
void clear(VARIANT* out);

// No exception may reach a client. Only memory that runs out throws.
template <class Answer>
HRESULT guarded(const Answer& answer) noexcept {
    try {
        return answer();
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
}

struct ReleaseObject {
    void operator()(IUnknown* object) const { object->Release(); }
};
template <class Interface>
using Held = std::unique_ptr<Interface, ReleaseObject>;

// An object deletes itself, so that it needs no virtual destructor; interfaces have none.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
class AccessibleObject final : public IAccessible, public IEnumVARIANT {
  public:
    // A new object, with one reference, which the caller owns; null when there is none to be had.
    static IAccessible* make(const std::shared_ptr<DescribedWindow>& described);

    AccessibleObject(const AccessibleObject&) = delete;
    AccessibleObject& operator=(const AccessibleObject&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;

    // By name nothing can be called; clients call the interface itself.
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                     UINT*) override {
        return E_NOTIMPL;
    }

    // One part
    HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* name) override;
    HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT child, BSTR* description) override;
    HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT* role) override;
    HRESULT STDMETHODCALLTYPE get_accState(VARIANT child, VARIANT* state) override;
    HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT child, BSTR* key) override;
    HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT child, BSTR* action) override;
    HRESULT STDMETHODCALLTYPE get_accValue(VARIANT child, BSTR* value) override;
    HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT child, BSTR* help) override;
    HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR*, VARIANT, LONG*) override {
        return DISP_E_MEMBERNOTFOUND;
    }
    HRESULT STDMETHODCALLTYPE put_accName(VARIANT, BSTR) override { return DISP_E_MEMBERNOTFOUND; }
    HRESULT STDMETHODCALLTYPE put_accValue(VARIANT, BSTR) override { return DISP_E_MEMBERNOTFOUND; }
    HRESULT STDMETHODCALLTYPE accLocation(LONG* left, LONG* top, LONG* width, LONG* height,
                                          VARIANT child) override;
    HRESULT STDMETHODCALLTYPE accSelect(LONG how, VARIANT child) override;
    HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT child) override;

    // The parts among each other
    HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** parent) override;
    HRESULT STDMETHODCALLTYPE get_accChildCount(LONG* count) override;
    HRESULT STDMETHODCALLTYPE get_accChild(VARIANT child, IDispatch** object) override;
    HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* child) override;
    HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* child) override;
    HRESULT STDMETHODCALLTYPE accNavigate(LONG direction, VARIANT from, VARIANT* to) override;
    HRESULT STDMETHODCALLTYPE accHitTest(LONG x, LONG y, VARIANT* child) override;

    // The enumeration of the parts
    HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* parts, ULONG* got) override;
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override;
    HRESULT STDMETHODCALLTYPE Reset() override;
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** copy) override;

  private:
    AccessibleObject(std::shared_ptr<DescribedWindow> described, Held<IAccessible> standard)
        : described_(std::move(described)), standard_(std::move(standard)) {}
    ~AccessibleObject() = default;

    // What a client's number stands for.
    struct Part {
        enum class Kind { none, whole, cell, standard };
        Kind kind;
        HRESULT error; // of none
        std::shared_ptr<AccessibleContent> content;
        int index; // of a cell
    };
    Part find(const VARIANT& child) const;

    HWND window() const { return described_->window; }
    std::shared_ptr<AccessibleContent> content() const;
    HRESULT post(AccessibleAction action, int index) const;

    // Answers about one part. `of_whole` makes what is given from the content, `of_cell` from the
    // cell. The standard object answers for what is not the content's, and for the content as a
    // whole where `of_whole` is null.
    template <class Out, class OfWhole, class OfCell>
    HRESULT answer(const VARIANT& child, Out* out, const OfWhole& of_whole, const OfCell& of_cell,
                   HRESULT (STDMETHODCALLTYPE IAccessible::*of_standard)(VARIANT, Out*));

    // Answers about all parts: `of_table` gets a content that has cells.
    template <class OfTable, class OfStandard>
    HRESULT answer(const OfTable& of_table, const OfStandard& of_standard);

    // As above, from the standard object's enumeration where there are no cells.
    template <class OfTable, class OfStandard>
    HRESULT enumerate(const OfTable& of_table, const OfStandard& of_standard);

    LONG references_ = 1;
    std::shared_ptr<DescribedWindow> described_;
    Held<IAccessible> standard_;
    int next_ = 0; // the cell that the enumeration gives next
};
#pragma GCC diagnostic pop

template <class Out, class OfWhole, class OfCell>
HRESULT AccessibleObject::answer(const VARIANT& child, Out* out, const OfWhole& of_whole,
                                 const OfCell& of_cell,
                                 HRESULT (STDMETHODCALLTYPE IAccessible::*of_standard)(VARIANT,
                                                                                       Out*)) {
    if (out == nullptr) {
        return E_INVALIDARG;
    }
    clear(out);
    return guarded([&] {
        const Part part = find(child);
        if (part.kind == Part::Kind::none) {
            return part.error;
        }
        if (part.kind == Part::Kind::cell) {
            return give(out, of_cell(part.content->cell(part.index)));
        }
        if constexpr (!std::is_null_pointer_v<OfWhole>) {
            if (part.kind == Part::Kind::whole) {
                return give(out, of_whole(*part.content));
            }
        }
        return (standard_.get()->*of_standard)(child, out);
    });
}

template <class OfTable, class OfStandard>
HRESULT AccessibleObject::answer(const OfTable& of_table, const OfStandard& of_standard) {
    return guarded([&] {
        const std::shared_ptr<AccessibleContent> all = content();
        if (all == nullptr) {
            return kGone;
        }
        return all->cells() > 0 ? of_table(*all) : of_standard();
    });
}

} // namespace platform
