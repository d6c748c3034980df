// The object's life, and what it tells of one part.
#include "platform/windows/accessible_object.h"

#include "platform/windows/accessible_parts.h"

namespace platform {

HRESULT give(BSTR* out, const std::string& utf8) {
    if (utf8.empty()) {
        return S_FALSE;
    }
    const int size = static_cast<int>(utf8.size());
    const int units = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, nullptr, 0);
    *out = SysAllocStringLen(nullptr, static_cast<UINT>(units));
    if (*out == nullptr) {
        return E_OUTOFMEMORY;
    }
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, *out, units);
    return S_OK;
}

HRESULT give(VARIANT* out, LONG number) {
    out->vt = VT_I4;
    out->lVal = number;
    return S_OK;
}

void clear(BSTR* out) {
    *out = nullptr;
}

void clear(VARIANT* out) {
    VariantInit(out);
}

// --- Life ----------------------------------------------------------------------------------------

IAccessible* AccessibleObject::make(const std::shared_ptr<DescribedWindow>& described) {
    void* found = nullptr;
    if (FAILED(CreateStdAccessibleObject(described->window, OBJID_CLIENT, __uuidof(IAccessible),
                                         &found))) {
        return nullptr;
    }
    Held<IAccessible> standard(static_cast<IAccessible*>(found));
    return new (std::nothrow) AccessibleObject(described, std::move(standard));
}

HRESULT AccessibleObject::QueryInterface(REFIID id, void** out) {
    if (out == nullptr) {
        return E_POINTER;
    }
    if (id == __uuidof(IUnknown) || id == __uuidof(IDispatch) || id == __uuidof(IAccessible)) {
        *out = static_cast<IAccessible*>(this);
    } else if (id == __uuidof(IEnumVARIANT)) {
        *out = static_cast<IEnumVARIANT*>(this);
    } else {
        *out = nullptr;
        return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
}

ULONG AccessibleObject::AddRef() {
    return static_cast<ULONG>(InterlockedIncrement(&references_));
}

ULONG AccessibleObject::Release() {
    const LONG left = InterlockedDecrement(&references_);
    if (left == 0) {
        delete this;
    }
    return static_cast<ULONG>(left);
}

// --- Who answers ---------------------------------------------------------------------------------

std::shared_ptr<AccessibleContent> AccessibleObject::content() const {
    const bool open = window() != nullptr && described_->thread == GetCurrentThreadId();
    return open ? described_->content.lock() : nullptr;
}

AccessibleObject::Part AccessibleObject::find(const VARIANT& child) const {
    std::shared_ptr<AccessibleContent> all = content();
    if (all == nullptr) {
        return {Part::Kind::none, kGone, nullptr, 0};
    }
    const bool number = child.vt == VT_I4;
    if (number && child.lVal == CHILDID_SELF) {
        return {Part::Kind::whole, S_OK, std::move(all), 0};
    }
    const int cells = all->cells();
    if (cells == 0) {
        return {Part::Kind::standard, S_OK, std::move(all), 0};
    }
    if (number && child.lVal >= 1 && child.lVal <= cells) {
        return {Part::Kind::cell, S_OK, std::move(all), child.lVal - 1};
    }
    return {Part::Kind::none, E_INVALIDARG, nullptr, 0};
}

HRESULT AccessibleObject::post(AccessibleAction action, int index) const {
    const bool posted =
        IsWindowEnabled(window()) &&
        PostMessageA(window(), kAccessibleAction, static_cast<WPARAM>(action), index);
    return posted ? S_OK : E_FAIL;
}

// --- One part ------------------------------------------------------------------------------------

namespace {

std::string no_text(const AccessibleCell&) {
    return {};
}

} // namespace

HRESULT AccessibleObject::get_accName(VARIANT child, BSTR* name) {
    return answer(
        child, name, [](const AccessibleContent& all) { return all.name(); },
        [](const AccessibleCell& cell) { return cell.name; }, &IAccessible::get_accName);
}

HRESULT AccessibleObject::get_accDescription(VARIANT child, BSTR* description) {
    return answer(
        child, description, description_of,
        [](const AccessibleCell& cell) { return cell.description; },
        &IAccessible::get_accDescription);
}

HRESULT AccessibleObject::get_accRole(VARIANT child, VARIANT* role) {
    return answer(
        child, role, role_of, [this](const AccessibleCell&) { return cell_role_of(*content()); },
        &IAccessible::get_accRole);
}

HRESULT AccessibleObject::get_accState(VARIANT child, VARIANT* state) {
    return answer(
        child, state, nullptr,
        [this](const AccessibleCell& cell) { return state_of(window(), cell); },
        &IAccessible::get_accState);
}

HRESULT AccessibleObject::get_accKeyboardShortcut(VARIANT child, BSTR* key) {
    return answer(
        child, key, nullptr, [](const AccessibleCell&) { return "Space"; },
        &IAccessible::get_accKeyboardShortcut);
}

HRESULT AccessibleObject::get_accDefaultAction(VARIANT child, BSTR* action) {
    return answer(
        child, action, nullptr, [](const AccessibleCell&) { return "Show alone"; },
        &IAccessible::get_accDefaultAction);
}

HRESULT AccessibleObject::get_accValue(VARIANT child, BSTR* value) {
    return answer(child, value, nullptr, no_text, &IAccessible::get_accValue);
}

HRESULT AccessibleObject::get_accHelp(VARIANT child, BSTR* help) {
    return answer(child, help, nullptr, no_text, &IAccessible::get_accHelp);
}

HRESULT AccessibleObject::accLocation(LONG* left, LONG* top, LONG* width, LONG* height,
                                      VARIANT child) {
    if (left == nullptr || top == nullptr || width == nullptr || height == nullptr) {
        return E_INVALIDARG;
    }
    *left = *top = *width = *height = 0;
    return guarded([&] {
        const Part part = find(child);
        if (part.kind == Part::Kind::none) {
            return part.error;
        }
        if (part.kind == Part::Kind::standard) {
            return standard_->accLocation(left, top, width, height, child);
        }
        const RECT area = part.kind == Part::Kind::cell ? part.content->cell(part.index).area
                                                        : client_area(window());
        const POINT from = to_screen(window(), {area.left, area.top});
        const POINT to = to_screen(window(), {area.right, area.bottom});
        *left = from.x;
        *top = from.y;
        *width = to.x - from.x;
        *height = to.y - from.y;
        return S_OK;
    });
}

// One cell at a time can be selected. The window gets the keyboard last, as it may answer that by
// anything.
HRESULT AccessibleObject::accSelect(LONG how, VARIANT child) {
    return guarded([&] {
        const Part part = find(child);
        if (part.kind == Part::Kind::none) {
            return part.error;
        }
        if (part.kind != Part::Kind::cell) {
            return standard_->accSelect(how, child);
        }
        if (how == SELFLAG_NONE || (how & ~(SELFLAG_TAKEFOCUS | SELFLAG_TAKESELECTION)) != 0) {
            return E_INVALIDARG;
        }
        const HRESULT posted = post(AccessibleAction::select, part.index);
        if (posted == S_OK && (how & SELFLAG_TAKEFOCUS) != 0) {
            SetForegroundWindow(window());
        }
        return posted;
    });
}

HRESULT AccessibleObject::accDoDefaultAction(VARIANT child) {
    return guarded([&] {
        const Part part = find(child);
        if (part.kind == Part::Kind::none) {
            return part.error;
        }
        return part.kind == Part::Kind::cell ? post(AccessibleAction::show_alone, part.index)
                                             : standard_->accDoDefaultAction(child);
    });
}

} // namespace platform
