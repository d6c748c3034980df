// What the object tells of the parts among each other.
#include "platform/windows/accessible_object.h"

#include "platform/accessible_cells.h"
#include "platform/windows/accessible_parts.h"

#include <algorithm>

namespace platform {

namespace {

HRESULT give_cell(VARIANT* out, int index, const AccessibleContent& content) {
    return index >= 0 && index < content.cells() ? give(out, index + 1) : S_FALSE;
}

} // namespace

// --- Which and where -----------------------------------------------------------------------------

HRESULT AccessibleObject::get_accParent(IDispatch** parent) {
    if (parent == nullptr) {
        return E_INVALIDARG;
    }
    *parent = nullptr;
    return content() != nullptr ? standard_->get_accParent(parent) : kGone;
}

HRESULT AccessibleObject::get_accChildCount(LONG* count) {
    if (count == nullptr) {
        return E_INVALIDARG;
    }
    *count = 0;
    return answer(
        [&](const AccessibleContent& table) {
            *count = table.cells();
            return S_OK;
        },
        [&] { return standard_->get_accChildCount(count); });
}

HRESULT AccessibleObject::get_accChild(VARIANT child, IDispatch** object) {
    if (object == nullptr) {
        return E_INVALIDARG;
    }
    *object = nullptr;
    return guarded([&] {
        const Part part = find(child);
        switch (part.kind) {
        case Part::Kind::cell:
            return S_FALSE; // there is, but no object
        case Part::Kind::standard:
            return standard_->get_accChild(child, object);
        case Part::Kind::whole:
            return E_INVALIDARG;
        case Part::Kind::none:
            break;
        }
        return part.error;
    });
}

HRESULT AccessibleObject::get_accFocus(VARIANT* child) {
    if (child == nullptr) {
        return E_INVALIDARG;
    }
    clear(child);
    return answer(
        [&](const AccessibleContent& table) {
            const bool on_cell = GetFocus() == window() && table.selected() >= 0;
            return on_cell ? give_cell(child, table.selected(), table)
                           : standard_->get_accFocus(child);
        },
        [&] { return standard_->get_accFocus(child); });
}

HRESULT AccessibleObject::get_accSelection(VARIANT* child) {
    if (child == nullptr) {
        return E_INVALIDARG;
    }
    clear(child);
    return answer(
        [&](const AccessibleContent& table) { return give_cell(child, table.selected(), table); },
        [&] { return standard_->get_accSelection(child); });
}

HRESULT AccessibleObject::accNavigate(LONG direction, VARIANT from, VARIANT* to) {
    if (to == nullptr) {
        return E_INVALIDARG;
    }
    clear(to);
    return guarded([&] {
        const Part part = find(from);
        if (part.kind == Part::Kind::none) {
            return part.error;
        }
        const AccessibleContent& all = *part.content;
        if (part.kind == Part::Kind::cell) {
            return give_cell(to, neighbour(all, part.index, direction), all);
        }
        const bool inwards = direction == NAVDIR_FIRSTCHILD || direction == NAVDIR_LASTCHILD;
        return inwards && all.cells() > 0
                   ? give_cell(to, direction == NAVDIR_FIRSTCHILD ? 0 : all.cells() - 1, all)
                   : standard_->accNavigate(direction, from, to);
    });
}

HRESULT AccessibleObject::accHitTest(LONG x, LONG y, VARIANT* child) {
    if (child == nullptr) {
        return E_INVALIDARG;
    }
    clear(child);
    return answer(
        [&](const AccessibleContent& table) {
            const POINT point = from_screen(window(), {x, y});
            const RECT client = client_area(window());
            if (!PtInRect(&client, point)) {
                return S_FALSE;
            }
            const int index = cell_at(table, point);
            return index >= 0 ? give_cell(child, index, table) : give(child, CHILDID_SELF);
        },
        [&] { return standard_->accHitTest(x, y, child); });
}

// --- The enumeration -----------------------------------------------------------------------------

template <class OfTable, class OfStandard>
HRESULT AccessibleObject::enumerate(const OfTable& of_table, const OfStandard& of_standard) {
    return answer(of_table, [&] {
        void* parts = nullptr;
        const HRESULT found = standard_->QueryInterface(__uuidof(IEnumVARIANT), &parts);
        return SUCCEEDED(found)
                   ? of_standard(*Held<IEnumVARIANT>(static_cast<IEnumVARIANT*>(parts)))
                   : found;
    });
}

HRESULT AccessibleObject::Next(ULONG count, VARIANT* parts, ULONG* got) {
    if (parts == nullptr) {
        return E_INVALIDARG;
    }
    return enumerate(
        [&](const AccessibleContent& table) {
            ULONG given = 0;
            for (; given < count && next_ < table.cells(); ++given, ++next_) {
                clear(&parts[given]);
                give(&parts[given], next_ + 1);
            }
            if (got != nullptr) {
                *got = given;
            }
            return given == count ? S_OK : S_FALSE;
        },
        [&](IEnumVARIANT& of_window) { return of_window.Next(count, parts, got); });
}

HRESULT AccessibleObject::Skip(ULONG count) {
    return enumerate(
        [&](const AccessibleContent& table) {
            const auto left = static_cast<ULONG>(std::max(table.cells() - next_, 0));
            next_ += static_cast<int>(std::min(count, left));
            return count <= left ? S_OK : S_FALSE;
        },
        [&](IEnumVARIANT& of_window) { return of_window.Skip(count); });
}

HRESULT AccessibleObject::Reset() {
    return enumerate(
        [&](const AccessibleContent&) {
            next_ = 0;
            return S_OK;
        },
        [&](IEnumVARIANT& of_window) { return of_window.Reset(); });
}

HRESULT AccessibleObject::Clone(IEnumVARIANT** copy) {
    if (copy == nullptr) {
        return E_INVALIDARG;
    }
    *copy = nullptr;
    return enumerate(
        [&](const AccessibleContent&) {
            standard_->AddRef();
            Held<IAccessible> standard(standard_.get());
            auto* made = new (std::nothrow) AccessibleObject(described_, std::move(standard));
            if (made == nullptr) {
                return E_OUTOFMEMORY;
            }
            made->next_ = next_;
            *copy = made;
            return S_OK;
        },
        [&](IEnumVARIANT& of_window) { return of_window.Clone(copy); });
}

} // namespace platform
