// The description of a window on Windows: objects for the clients that ask, and events.
#include "platform/accessible.h"

#include "platform/windows/accessible_object.h"

namespace platform {

namespace {

// Belongs to the window, which deletes it. It is a property of the window, too, as the compiler's
// libraries lack the call that returns what a subclass was given.
using Description = std::shared_ptr<DescribedWindow>;

constexpr char kProperty[] = "Pelmora description";

// Null for a window that was never described, or is destroyed.
Description* description_of(HWND window) {
    return static_cast<Description*>(GetPropA(window, kProperty));
}

std::shared_ptr<AccessibleContent> content_of(HWND window) {
    const Description* description = description_of(window);
    return description != nullptr ? (*description)->content.lock() : nullptr;
}

// --- Telling -------------------------------------------------------------------------------------

// `cell` is an index, or -1 for the content as a whole. A listener in this process may act at once,
// so nothing is asked of the content afterwards.
void notify(DWORD event, HWND window, int cell) {
    NotifyWinEvent(event, window, OBJID_CLIENT, CHILDID_SELF + 1 + cell);
}

// A focus in a window without the keyboard would make a screen reader leave the one that has it.
void notify_focus(HWND window, int cell) {
    if (GetFocus() == window) {
        notify(EVENT_OBJECT_FOCUS, window, cell);
    }
}

// --- Answering -----------------------------------------------------------------------------------

// 0 when there is no content.
LRESULT object_for(WPARAM wparam, const Description& description) {
    IAccessible* object =
        description->content.expired() ? nullptr : AccessibleObject::make(description);
    if (object == nullptr) {
        return 0;
    }
    const LRESULT answer = LresultFromObject(__uuidof(IAccessible), wparam, object);
    object->Release(); // the client's reference remains
    return answer;
}

void forget(HWND window) {
    const std::unique_ptr<Description> description(description_of(window));
    RemovePropA(window, kProperty);
    (*description)->window = nullptr;
}

// Of a window that is described.
LRESULT CALLBACK DescribedProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR,
                               DWORD_PTR) {
    if (message == WM_GETOBJECT && static_cast<LONG>(lparam) == OBJID_CLIENT) {
        const LRESULT answer = object_for(wparam, *description_of(window));
        if (answer != 0) {
            return answer;
        }
    }
    if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(window, DescribedProc, 0);
        forget(window);
    }
    const LRESULT result = DefSubclassProc(window, message, wparam, lparam);
    if (message == WM_SETFOCUS) {
        tell_selected(window); // the system tells of the window alone
    }
    return result;
}

} // namespace

void describe(HWND window, const std::shared_ptr<AccessibleContent>& content) {
    // Objects reach other processes through COM, by way of this thread's message loop. It is never
    // left: clients may hold objects until the process ends.
    static const HRESULT com = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    static_cast<void>(com);

    Description* known = description_of(window);
    if (known != nullptr) {
        (*known)->content = content;
        return;
    }
    auto description = std::make_unique<Description>(
        std::make_shared<DescribedWindow>(DescribedWindow{window, GetCurrentThreadId(), content}));
    if (!SetPropA(window, kProperty, description.get())) {
        return;
    }
    static_cast<void>(description.release());
    if (!SetWindowSubclass(window, DescribedProc, 0, 0)) {
        forget(window);
    }
}

void tell_selected(HWND window) {
    const std::shared_ptr<AccessibleContent> content = content_of(window);
    if (content != nullptr) {
        const int cell = content->selected();
        notify_focus(window, cell);
        notify(cell >= 0 ? EVENT_OBJECT_SELECTION : EVENT_OBJECT_SELECTIONWITHIN, window, cell);
    }
}

void tell_cell_changed(HWND window, int cell) {
    if (content_of(window) != nullptr) {
        notify(EVENT_OBJECT_DESCRIPTIONCHANGE, window, cell);
    }
}

void tell_content_changed(HWND window) {
    const std::shared_ptr<AccessibleContent> content = content_of(window);
    if (content == nullptr) {
        return;
    }
    const bool status = content->role() == AccessibleRole::status;
    notify(EVENT_OBJECT_REORDER, window, -1);
    notify(EVENT_OBJECT_NAMECHANGE, window, -1);
    if (status) {
        notify(EVENT_SYSTEM_ALERT, window, 0);
    } else {
        tell_selected(window); // what is shown now is read
    }
}

} // namespace platform
