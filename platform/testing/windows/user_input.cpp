// The simulated user's keyboard and mouse: real input, which the system sends to the foreground
// window.
#include "platform/testing/windows/user_parts.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <vector>

namespace user {

namespace {

struct NamedKey {
    const char* name;
    WORD key;
};
constexpr NamedKey kNamedKeys[] = {
    {"Return", VK_RETURN}, {"Esc", VK_ESCAPE},  {"Tab", VK_TAB},   {"Space", VK_SPACE},
    {"Up", VK_UP},         {"Down", VK_DOWN},   {"Left", VK_LEFT}, {"Right", VK_RIGHT},
    {"PgUp", VK_PRIOR},    {"PgDown", VK_NEXT}, {"Home", VK_HOME}, {"End", VK_END},
    {"Ins", VK_INSERT},    {"Del", VK_DELETE},  {"F10", VK_F10},
};

struct ModifierKey {
    unsigned modifier;
    const char* name;
    WORD key;
};
constexpr ModifierKey kModifierKeys[] = {
    {control, "Ctrl+", VK_CONTROL}, {alt, "Alt+", VK_MENU}, {shift, "Shift+", VK_SHIFT}};

INPUT key_event(WORD key, bool down) {
    INPUT event{};
    event.type = INPUT_KEYBOARD;
    event.ki.wVk = key;
    event.ki.wScan = static_cast<WORD>(MapVirtualKeyA(key, MAPVK_VK_TO_VSC));
    // The navigation keys beside the number pad.
    const bool extended = key >= VK_PRIOR && key <= VK_DELETE && key != VK_SELECT;
    event.ki.dwFlags = (down ? 0U : KEYEVENTF_KEYUP) | (extended ? KEYEVENTF_EXTENDEDKEY : 0U);
    return event;
}

INPUT mouse_event(DWORD what) {
    INPUT event{};
    event.type = INPUT_MOUSE;
    event.mi.dwFlags = what;
    return event;
}

void send(std::vector<INPUT> events) {
    SendInput(static_cast<UINT>(events.size()), events.data(), sizeof(INPUT));
}

// Sends the events while the modifiers are held.
void send_with_modifiers(unsigned modifiers, const std::vector<INPUT>& events) {
    std::vector<INPUT> all;
    for (const ModifierKey& modifier : kModifierKeys) {
        if ((modifiers & modifier.modifier) != 0) {
            all.push_back(key_event(modifier.key, true));
        }
    }
    all.insert(all.end(), events.begin(), events.end());
    for (const ModifierKey& modifier : kModifierKeys) {
        if ((modifiers & modifier.modifier) != 0) {
            all.push_back(key_event(modifier.key, false));
        }
    }
    send(all);
}

void send_key(WORD key, unsigned modifiers = none) {
    send_with_modifiers(modifiers, {key_event(key, true), key_event(key, false)});
}

// Removes the modifiers from the front of `keys`, such as "Ctrl+E".
unsigned take_modifiers(std::string& keys) {
    unsigned modifiers = none;
    for (const ModifierKey& modifier : kModifierKeys) {
        if (keys.starts_with(modifier.name)) {
            keys.erase(0, std::string(modifier.name).size());
            modifiers |= modifier.modifier;
        }
    }
    return modifiers;
}

// The key after the modifiers; adds shift to them when the character needs it.
WORD take_key(std::string keys, unsigned* modifiers) {
    *modifiers = take_modifiers(keys);
    for (const NamedKey& named : kNamedKeys) {
        if (keys == named.name) {
            return named.key;
        }
    }
    const char plain = static_cast<char>(std::tolower(static_cast<unsigned char>(keys.front())));
    const auto key = static_cast<WORD>(VkKeyScanA(plain));
    *modifiers |= HIBYTE(key) == 1 ? shift : none;
    return LOBYTE(key);
}

// Sends one event for each modifier and `times` for the key, all of them down or all up.
void send_without_release(const std::string& keys, bool down, int times) {
    unsigned modifiers = none;
    const WORD key = take_key(keys, &modifiers);
    std::vector<INPUT> events;
    for (const ModifierKey& modifier : kModifierKeys) {
        if ((modifiers & modifier.modifier) != 0) {
            events.push_back(key_event(modifier.key, down));
        }
    }
    events.insert(events.end(), static_cast<std::size_t>(times), key_event(key, down));
    send(events);
}

void send_text(const std::string& text) {
    std::vector<INPUT> events;
    for (const wchar_t unit : wide(text)) {
        INPUT event{};
        event.type = INPUT_KEYBOARD;
        event.ki.wScan = static_cast<WORD>(unit);
        event.ki.dwFlags = KEYEVENTF_UNICODE;
        events.push_back(event);
        event.ki.dwFlags |= KEYEVENTF_KEYUP;
        events.push_back(event);
    }
    if (!events.empty()) {
        send(events);
    }
}

bool left_button_held = false; // by hold_arrow()

void release_mouse() {
    if (left_button_held) {
        left_button_held = false;
        send({mouse_event(MOUSEEVENTF_LEFTUP)});
    }
}

// Quick clicks are single clicks unless `times` asks for a double click.
void click_times(POINT at, Button button, unsigned modifiers, int times) {
    release_mouse();
    SetDoubleClickTime(times > 1 ? 5000 : 1);
    SetCursorPos(at.x, at.y);
    const bool left = button == Button::left;
    std::vector<INPUT> events;
    for (int i = 0; i < times; ++i) {
        events.push_back(mouse_event(left ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_RIGHTDOWN));
        events.push_back(mouse_event(left ? MOUSEEVENTF_LEFTUP : MOUSEEVENTF_RIGHTUP));
    }
    send_with_modifiers(modifiers, events);
}

void queue_click(HWND window, POINT at, Button button, unsigned modifiers, int times) {
    queue_action([=] {
        if (!IsWindow(window)) {
            return;
        }
        bring_up(window);
        POINT place = at;
        ClientToScreen(window, &place);
        click_times(place, button, modifiers, times);
    });
}

// The middle of the upper or the lower arrow of an up-down control.
POINT arrow_place(HWND dialog, int control, bool up) {
    RECT area{};
    GetClientRect(GetDlgItem(dialog, control), &area);
    return {area.right / 2, up ? area.bottom / 4 : area.bottom * 3 / 4};
}

// The entries of a menu, without mnemonics, shortcuts and separators.
std::vector<std::string> entries(HMENU menu, std::vector<bool>* greyed) {
    std::vector<std::string> all;
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        const UINT state = GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION);
        char label[128] = "";
        GetMenuStringA(menu, static_cast<UINT>(i), label, sizeof label, MF_BYPOSITION);
        if ((state & MF_SEPARATOR) != 0 && (state & MF_POPUP) == 0) {
            continue;
        }
        std::string name = label;
        name.erase(std::min(name.find('\t'), name.size()));
        std::erase(name, '&');
        all.push_back(name);
        greyed->push_back((state & MF_GRAYED) != 0);
    }
    return all;
}

int index_of(const std::string& name, const std::vector<std::string>& all) {
    const auto found = std::find(all.begin(), all.end(), name);
    return found != all.end() ? static_cast<int>(found - all.begin()) : -1;
}

} // namespace

void bring_up(HWND window) {
    HWND top = GetAncestor(window, GA_ROOT);
    if (IsWindowEnabled(top) && GetForegroundWindow() != top) {
        SetForegroundWindow(top);
        BringWindowToTop(top);
    }
}

void press(HWND window, const std::string& keys) {
    queue_action([=] {
        if (IsWindow(window)) {
            bring_up(window);
            unsigned modifiers = none;
            const WORD key = take_key(keys, &modifiers);
            send_key(key, modifiers);
        }
    });
}

void hold(HWND window, const std::string& keys, int repeats) {
    queue_action([=] {
        bring_up(window);
        send_without_release(keys, true, 1 + repeats);
    });
}

void let_go(HWND, const std::string& keys) {
    queue_action([=] { send_without_release(keys, false, 1); });
}

void click(HWND window, int x, int y, Button button, unsigned modifiers) {
    queue_click(window, {x, y}, button, modifiers, 1);
}

void double_click(HWND window, int x, int y, unsigned modifiers) {
    queue_click(window, {x, y}, Button::left, modifiers, 2);
}

bool choose(HWND window, const std::string& menu, const std::string& entry) {
    HMENU bar = GetMenu(window);
    std::vector<bool> greyed;
    const int popup = index_of(menu, entries(bar, &greyed));
    greyed.clear();
    const int place = popup < 0 ? -1 : index_of(entry, entries(GetSubMenu(bar, popup), &greyed));
    if (place < 0 || greyed[static_cast<std::size_t>(place)]) {
        return false;
    }
    queue_action([=] {
        bring_up(window);
        RECT area{};
        GetMenuItemRect(window, bar, static_cast<UINT>(popup), &area);
        click_times({(area.left + area.right) / 2, (area.top + area.bottom) / 2}, Button::left,
                    none, 1);
        for (int i = 0; i <= place; ++i) {
            send_key(VK_DOWN);
        }
        send_key(VK_RETURN);
    });
    return true;
}

void click_control(HWND window, int control, Button button) {
    HWND target = GetDlgItem(window, control);
    RECT area{};
    GetClientRect(target, &area);
    SendMessageA(target, TBM_GETCHANNELRECT, 0, reinterpret_cast<LPARAM>(&area)); // of a slider
    queue_click(target, {(area.left + area.right) / 2, area.bottom - 4}, button, none, 1);
}

void click_arrow(HWND dialog, int control, bool up) {
    queue_click(GetDlgItem(dialog, control), arrow_place(dialog, control, up), Button::left, none,
                1);
}

void hold_arrow(HWND dialog, int control, bool up) {
    queue_action([=] {
        bring_up(dialog);
        POINT place = arrow_place(dialog, control, up);
        ClientToScreen(GetDlgItem(dialog, control), &place);
        SetCursorPos(place.x, place.y);
        left_button_held = true;
        send({mouse_event(MOUSEEVENTF_LEFTDOWN)});
    });
}

void focus(HWND window, int control) {
    queue_action([=] {
        bring_up(window);
        SetFocus(GetDlgItem(window, control));
    });
}

void type(HWND window, int control, const std::string& text) {
    queue_action([=] {
        bring_up(window);
        HWND edit = GetDlgItem(window, control);
        SetFocus(edit);
        SendMessageA(edit, EM_SETSEL, 0, -1);
        send_key(VK_DELETE);
        send_text(text);
    });
}

void drag(HWND dialog, int control, int to) {
    queue_action([=] {
        bring_up(dialog);
        HWND slider = GetDlgItem(dialog, control);
        const auto ask = [slider](UINT what) {
            return static_cast<int>(SendMessageA(slider, what, 0, 0));
        };
        RECT thumb{};
        RECT groove{};
        SendMessageA(slider, TBM_GETTHUMBRECT, 0, reinterpret_cast<LPARAM>(&thumb));
        SendMessageA(slider, TBM_GETCHANNELRECT, 0, reinterpret_cast<LPARAM>(&groove));
        const int range = ask(TBM_GETRANGEMAX) - ask(TBM_GETRANGEMIN);
        const int way = (to - ask(TBM_GETPOS)) *
                        static_cast<int>(groove.right - groove.left - (thumb.right - thumb.left)) /
                        range;
        POINT place{(thumb.left + thumb.right) / 2, (thumb.top + thumb.bottom) / 2};
        ClientToScreen(slider, &place);
        SetCursorPos(place.x, place.y);
        send({mouse_event(MOUSEEVENTF_LEFTDOWN)});
        INPUT move = mouse_event(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE);
        const auto scaled = [](LONG at, int size) {
            constexpr int kWhole = 65'536;
            return (at * kWhole + kWhole / 2) / GetSystemMetrics(size);
        };
        move.mi.dx = scaled(place.x + way, SM_CXSCREEN);
        move.mi.dy = scaled(place.y, SM_CYSCREEN);
        send({move, mouse_event(MOUSEEVENTF_LEFTUP)});
    });
}

void resize(HWND window, int width, int height) {
    // Twice: the first change of the width may change the number of lines of the menu bar.
    for (int i = 0; i < 2; ++i) {
        RECT outer{};
        RECT client{};
        GetWindowRect(window, &outer);
        GetClientRect(window, &client);
        SetWindowPos(window, nullptr, 0, 0, outer.right - outer.left + width - client.right,
                     outer.bottom - outer.top + height - client.bottom,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

void close(HWND window) {
    queue_action([window] {
        if (IsWindowEnabled(window)) {
            PostMessageA(window, WM_SYSCOMMAND, SC_CLOSE, 0);
        }
    });
}

} // namespace user
