// What clients of Microsoft Active Accessibility get of a window that describes its content.
#include "tests/ui/program.h"
#include "ui/population_view.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <oleacc.h>

namespace {

using namespace pelmora;
using namespace pelmora_test;
using Texts = std::vector<std::string>;

VARIANT part(LONG number) {
    VARIANT child{};
    child.vt = VT_I4;
    child.lVal = number;
    return child;
}

std::string bytes_of(BSTR text) {
    std::string bytes;
    for (UINT i = 0; i < SysStringLen(text); ++i) {
        bytes += static_cast<char>(text[i]);
    }
    SysFreeString(text);
    return bytes;
}

// A client's object; it may outlast its window.
class Client {
  public:
    explicit Client(HWND window) {
        void* object = nullptr;
        EXPECT_EQ(
            AccessibleObjectFromWindow(window, DWORD(OBJID_CLIENT), __uuidof(IAccessible), &object),
            S_OK);
        object_ = static_cast<IAccessible*>(object);
    }
    ~Client() { EXPECT_EQ(object_->Release(), 0U); } // nobody else keeps it
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    IAccessible* operator->() const { return object_; }
    IAccessible* object() const { return object_; }

    LONG count() const {
        LONG count = -1;
        object_->get_accChildCount(&count);
        return count;
    }
    LONG role(LONG child = CHILDID_SELF) const { return number(child, &IAccessible::get_accRole); }
    LONG state(LONG child = CHILDID_SELF) const {
        return number(child, &IAccessible::get_accState);
    }
    std::string name(LONG child = CHILDID_SELF) const {
        return text(child, &IAccessible::get_accName);
    }
    std::string description(LONG child = CHILDID_SELF) const {
        return text(child, &IAccessible::get_accDescription);
    }
    std::string text(LONG child,
                     HRESULT (STDMETHODCALLTYPE IAccessible::*get)(VARIANT, BSTR*)) const {
        BSTR text = nullptr;
        const HRESULT got = (object_->*get)(part(child), &text);
        EXPECT_EQ(got, text != nullptr ? S_OK : S_FALSE);
        return bytes_of(text);
    }
    RECT place(LONG child) const {
        RECT at{};
        EXPECT_EQ(object_->accLocation(&at.left, &at.top, &at.right, &at.bottom, part(child)),
                  S_OK);
        return {at.left, at.top, at.left + at.right, at.top + at.bottom};
    }

    // The number of a part; -1 for none.
    LONG focus() const { return number_of(&IAccessible::get_accFocus); }
    LONG selection() const { return number_of(&IAccessible::get_accSelection); }
    LONG hit(LONG x, LONG y) const { return number_of(&IAccessible::accHitTest, x, y); }
    LONG next(LONG direction, LONG from) const {
        return number_of(&IAccessible::accNavigate, direction, part(from));
    }

  private:
    LONG number(LONG child,
                HRESULT (STDMETHODCALLTYPE IAccessible::*get)(VARIANT, VARIANT*)) const {
        return number_of(get, part(child));
    }
    template <class Get, class... Arguments>
    LONG number_of(Get get, Arguments... arguments) const {
        VARIANT out{};
        const HRESULT got = (object_->*get)(arguments..., &out);
        EXPECT_TRUE(SUCCEEDED(got));
        return out.vt == VT_I4 ? out.lVal : -1;
    }

    IAccessible* object_ = nullptr;
};

TEST(WindowsAccessible, TheGridIsATable) {
    const PopulationWindow window(small_params(20));
    LogoWindow* record = window.record();
    user::resize(window.handle(), 620, 300);
    settle();
    record->lifeFlags[7] = 0;
    record->selected = 7;
    const Client client(window.handle());
    EXPECT_EQ(client.role(), ROLE_SYSTEM_TABLE);
    EXPECT_EQ(client.name(), "Population of 20 turtles");
    EXPECT_EQ(client.description(), "4 rows, 6 columns");
    EXPECT_EQ(client.count(), 20);
    EXPECT_EQ(client.selection(), 8);
    EXPECT_EQ(client.focus(), 8);

    EXPECT_EQ(client.role(8), ROLE_SYSTEM_CELL);
    EXPECT_EQ(client.name(8), "Turtle 8");
    EXPECT_EQ(client.description(8).substr(0, 15), "retired, score ");
    EXPECT_EQ(client.description(9).substr(0, 12), "live, score ");
    EXPECT_EQ(client.text(8, &IAccessible::get_accDefaultAction), "Show alone");
    EXPECT_EQ(client.text(8, &IAccessible::get_accKeyboardShortcut), "Space");
    EXPECT_EQ(client.text(8, &IAccessible::get_accValue), "");
    const LONG any = STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE;
    EXPECT_EQ(client.state(8), any | STATE_SYSTEM_SELECTED | STATE_SYSTEM_FOCUSED);
    EXPECT_EQ(client.state(9), any);
    EXPECT_EQ(client.state(20), any | STATE_SYSTEM_OFFSCREEN);

    for (const int cell : {0, 7, 19}) {
        const RECT inside = LogoCellRect(record, cell);
        POINT corners[] = {{inside.left, inside.top}, {inside.right, inside.bottom}};
        MapWindowPoints(window.handle(), nullptr, corners, 2);
        const RECT place = client.place(cell + 1);
        EXPECT_TRUE(place.left == corners[0].x && place.top == corners[0].y);
        EXPECT_TRUE(place.right == corners[1].x && place.bottom == corners[1].y);
        const bool shown = cell < 18; // three rows are
        EXPECT_EQ(client.hit(place.left, place.top), shown ? cell + 1 : -1);
        EXPECT_EQ(client.hit(place.right - 1, place.top + 1), shown ? cell + 1 : -1);
        EXPECT_EQ(client.hit(place.right, place.top), shown ? CHILDID_SELF : -1);
    }
    const RECT all = client.place(CHILDID_SELF);
    EXPECT_TRUE(all.right - all.left == 620 && all.bottom - all.top == 300);
    EXPECT_EQ(client.hit(all.left - 1, all.top), -1);
}

TEST(WindowsAccessible, CellsHaveNeighboursAndAreEnumerated) {
    const PopulationWindow window(small_params(8));
    user::resize(window.handle(), 300, 320);
    settle();
    const Client client(window.handle());
    struct Step {
        LONG direction;
        LONG from;
        LONG to;
    };
    for (const Step& step : {Step{NAVDIR_FIRSTCHILD, 0, 1},
                             {NAVDIR_LASTCHILD, 0, 8},
                             {NAVDIR_RIGHT, 2, 3},
                             {NAVDIR_RIGHT, 3, -1},
                             {NAVDIR_RIGHT, 8, -1},
                             {NAVDIR_LEFT, 3, 2},
                             {NAVDIR_LEFT, 4, -1},
                             {NAVDIR_DOWN, 5, 8},
                             {NAVDIR_DOWN, 6, -1},
                             {NAVDIR_UP, 4, 1},
                             {NAVDIR_UP, 3, -1},
                             {NAVDIR_NEXT, 3, 4},
                             {NAVDIR_NEXT, 8, -1},
                             {NAVDIR_PREVIOUS, 4, 3},
                             {NAVDIR_PREVIOUS, 1, -1},
                             {NAVDIR_FIRSTCHILD, 1, -1}}) {
        EXPECT_EQ(client.next(step.direction, step.from), step.to)
            << step.direction << " from " << step.from;
    }
    std::array<VARIANT, 10> parts{};
    LONG got = 0;
    EXPECT_EQ(AccessibleChildren(client.object(), 3, 10, parts.data(), &got), S_FALSE);
    ASSERT_EQ(got, 5);
    EXPECT_TRUE(parts[0].vt == VT_I4 && parts[0].lVal == 4);
    EXPECT_TRUE(parts[4].vt == VT_I4 && parts[4].lVal == 8);
    IDispatch* object = nullptr;
    EXPECT_EQ(client->get_accChild(part(8), &object), S_FALSE);

    void* first = nullptr;
    ASSERT_EQ(client->QueryInterface(__uuidof(IEnumVARIANT), &first), S_OK);
    auto* all = static_cast<IEnumVARIANT*>(first);
    EXPECT_EQ(all->Reset(), S_OK);
    EXPECT_EQ(all->Skip(6), S_OK);
    IEnumVARIANT* rest = nullptr;
    ASSERT_EQ(all->Clone(&rest), S_OK);
    ULONG count = 0;
    EXPECT_EQ(rest->Next(10, parts.data(), &count), S_FALSE);
    EXPECT_EQ(count, 2U);
    EXPECT_EQ(parts[0].lVal, 7);
    EXPECT_EQ(all->Skip(3), S_FALSE);
    EXPECT_EQ(rest->Release(), 0U);
    all->Release();
}

TEST(WindowsAccessible, ActsOnCellsUnlessADialogIsOpen) {
    const PopulationWindow window(small_params(8));
    const LogoWindow* record = window.record();
    const Client client(window.handle());
    EXPECT_EQ(client->accSelect(SELFLAG_TAKEFOCUS | SELFLAG_TAKESELECTION, part(3)), S_OK);
    EXPECT_EQ(client->accSelect(SELFLAG_ADDSELECTION, part(4)), E_INVALIDARG);
    settle();
    EXPECT_EQ(record->selected, 2);
    EnableWindow(window.handle(), FALSE);
    EXPECT_NE(client.state(5) & STATE_SYSTEM_UNAVAILABLE, 0);
    EXPECT_EQ(client->accSelect(SELFLAG_TAKESELECTION, part(5)), E_FAIL);
    EXPECT_EQ(client->accDoDefaultAction(part(5)), E_FAIL);
    EnableWindow(window.handle(), TRUE);
    settle();
    EXPECT_EQ(record->selected, 2);
    EXPECT_EQ(record->showGrid, 1);

    EXPECT_EQ(client->accDoDefaultAction(part(5)), S_OK);
    settle();
    EXPECT_EQ(record->showGrid, 0);
    EXPECT_EQ(client.count(), 1);
    EXPECT_EQ(client.name(1), "Turtle 5 alone");
    EXPECT_EQ(client.description(1).substr(0, 12), "live, score ");
    EXPECT_EQ(client->accDoDefaultAction(part(1)), S_OK); // and back
    settle();
    EXPECT_EQ(record->showGrid, 1);
}

// A content of its own: a table as large as a population may be.
class Table : public platform::AccessibleContent {
  public:
    platform::AccessibleRole role() const override { return platform::AccessibleRole::table; }
    std::string name() const override { return "Table"; }
    int cells() const override { return 32766; }
    int columns() const override { return 10; }
    platform::AccessibleCell cell(int index) const override {
        EXPECT_TRUE(index >= 0 && index < cells());
        const LONG left = 10 * (index % 10);
        const LONG top = index / 10 - 3270; // the last rows are in the window
        return {"", "", false, {left, top, left + 9, top + 1}};
    }
};

TEST(WindowsAccessible, RefusesPartsThatDoNotExistAndWindowsThatAreGone) {
    HWND window = show_owner();
    auto table = std::make_shared<Table>();
    platform::describe(window, table);
    const Client client(window);
    EXPECT_EQ(client.count(), 32766);
    const RECT last = client.place(32766);
    EXPECT_EQ(client.hit(last.left, last.top), 32766);
    EXPECT_EQ(client.hit(last.right + 1, last.top), CHILDID_SELF); // the last row is not full
    EXPECT_EQ(client.hit(last.left, last.bottom), CHILDID_SELF);

    const auto refusals = [&client](VARIANT child) {
        BSTR text = nullptr;
        VARIANT value{};
        LONG x = 0;
        const HRESULT answers[] = {client->get_accName(child, &text),
                                   client->get_accState(child, &value),
                                   client->get_accRole(child, &value),
                                   client->accLocation(&x, &x, &x, &x, child),
                                   client->accNavigate(NAVDIR_NEXT, child, &value),
                                   client->accSelect(SELFLAG_TAKESELECTION, child),
                                   client->accDoDefaultAction(child)};
        for (const HRESULT answer : answers) {
            EXPECT_EQ(answer, answers[0]) << child.lVal;
        }
        return answers[0];
    };
    for (const LONG number : {32767L, 100000L, -1L, LONG_MIN, LONG_MAX}) {
        EXPECT_EQ(refusals(part(number)), E_INVALIDARG) << number;
    }
    EXPECT_EQ(refusals(VARIANT{}), E_INVALIDARG); // no number

    const std::weak_ptr<Table> owner = table;
    table.reset();
    EXPECT_TRUE(owner.expired()); // objects do not keep it
    EXPECT_EQ(refusals(part(1)), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(refusals(part(CHILDID_SELF)), CO_E_OBJNOTCONNECTED);

    table = std::make_shared<Table>();
    platform::describe(window, table);
    EXPECT_EQ(client.name(), "Table");
    DestroyWindow(window);
    EXPECT_EQ(refusals(part(1)), CO_E_OBJNOTCONNECTED); // though the content lives
    EXPECT_EQ(client.count(), 0);
    platform::tell_selected(window);
}

class Picture : public platform::AccessibleContent {
  public:
    explicit Picture(platform::AccessibleRole role) : role_(role) {}
    platform::AccessibleRole role() const override { return role_; }
    std::string name() const override { return "Picture"; }

  private:
    platform::AccessibleRole role_;
};

TEST(WindowsAccessible, APictureLeavesTheControlsToTheSystem) {
    HWND window = show_owner();
    HWND button = CreateWindowExA(0, "BUTTON", "Press", WS_CHILD | WS_VISIBLE, 8, 8, 100, 21,
                                  window, nullptr, nullptr, nullptr);
    for (const auto& [role, number] :
         {std::pair(platform::AccessibleRole::picture, ROLE_SYSTEM_GRAPHIC),
          {platform::AccessibleRole::status, ROLE_SYSTEM_STATUSBAR}}) {
        const auto content = std::make_shared<Picture>(role);
        platform::describe(window, content);
        const Client client(window);
        EXPECT_EQ(client.role(), number);
        EXPECT_EQ(client.name(), "Picture");
        EXPECT_EQ(client.count(), 1);
        VARIANT child{};
        LONG got = 0;
        EXPECT_EQ(AccessibleChildren(client.object(), 0, 1, &child, &got), S_OK);
        ASSERT_TRUE(got == 1 && child.vt == VT_DISPATCH);
        void* object = nullptr;
        EXPECT_EQ(child.pdispVal->QueryInterface(__uuidof(IAccessible), &object), S_OK);
        HWND found = nullptr;
        EXPECT_EQ(WindowFromAccessibleObject(static_cast<IAccessible*>(object), &found), S_OK);
        EXPECT_EQ(found, button);
        static_cast<IAccessible*>(object)->Release();
        VariantClear(&child);
    }
    DestroyWindow(window);
}

// --- Events --------------------------------------------------------------------------------------

Texts events;

void CALLBACK Listen(HWINEVENTHOOK, DWORD event, HWND, LONG object, LONG child, DWORD, DWORD) {
    const std::pair<DWORD, const char*> names[] = {
        {EVENT_OBJECT_FOCUS, "focus"},
        {EVENT_OBJECT_SELECTION, "selection"},
        {EVENT_OBJECT_SELECTIONWITHIN, "selection within"},
        {EVENT_OBJECT_DESCRIPTIONCHANGE, "description"},
        {EVENT_OBJECT_NAMECHANGE, "name"},
        {EVENT_OBJECT_REORDER, "reorder"},
    };
    for (const auto& [number, name] : names) {
        if (event == number && object == OBJID_CLIENT) {
            events.push_back(std::string(name) + " " + std::to_string(child));
        }
    }
}

TEST(WindowsAccessible, TellsWhatChanges) {
    const PopulationWindow window(small_params(8));
    HWINEVENTHOOK hook =
        SetWinEventHook(EVENT_OBJECT_CREATE, EVENT_OBJECT_END, nullptr, Listen,
                        GetCurrentProcessId(), GetCurrentThreadId(), WINEVENT_OUTOFCONTEXT);
    ASSERT_NE(hook, nullptr);
    const auto told_by = [&window](const std::function<void()>& act) {
        events.clear();
        act();
        settle();
        return events;
    };
    const auto press = [&](const char* keys) {
        return told_by([&] { user::press(window.handle(), keys); });
    };
    EXPECT_EQ(press("Right"), (Texts{"focus 1", "selection 1"}));
    EXPECT_EQ(press("End"), (Texts{"focus 8", "selection 8"}));
    EXPECT_EQ(press("Space"), (Texts{"description 8"}));
    EXPECT_EQ(press("Return"), (Texts{"reorder 0", "name 0", "focus 1", "selection 1"}));
    EXPECT_EQ(press("Space"), (Texts{"description 1"}));
    EXPECT_EQ(press("Return"), (Texts{"reorder 0", "name 0", "focus 8", "selection 8"}));
    EXPECT_EQ(told_by([&] { user::click(window.handle(), 1, 1); }),
              (Texts{"focus 0", "selection within 0"}));
    press("Home");
    HWND other = show_owner();
    settle();
    EXPECT_EQ(told_by([&] {
                  platform::tell_selected(window.handle()); // without the keyboard
                  platform::tell_selected(other);           // not described
              }),
              (Texts{"selection 1"}));
    const Client client(window.handle());
    EXPECT_EQ(client.focus(), -1);
    EXPECT_EQ(client.state(1) & (STATE_SYSTEM_SELECTED | STATE_SYSTEM_FOCUSED),
              STATE_SYSTEM_SELECTED);
    const Texts back = told_by([&] { SetForegroundWindow(window.handle()); });
    EXPECT_NE(std::find(back.begin(), back.end(), "focus 1"), back.end());
    UnhookWinEvent(hook);
    DestroyWindow(other);
}

// --- Another thread, as another process: every call comes through the message loop ---------------

// Nothing is expected in here: the test framework is used by one thread.
struct Reader {
    HWND window = nullptr;
    Texts names;
    HRESULT selected = E_FAIL;
    HRESULT of_closed = S_OK;
    std::atomic<bool> read = false;
    std::atomic<bool> closed = false;
    std::atomic<bool> done = false;

    static std::string name_of(IAccessible* object, LONG child) {
        BSTR name = nullptr;
        object->get_accName(part(child), &name);
        return bytes_of(name);
    }
    void use(IAccessible* object) {
        names = {name_of(object, CHILDID_SELF), name_of(object, 8)};
        selected = object->accSelect(SELFLAG_TAKESELECTION, part(8));
        read = true;
        while (!closed) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        BSTR name = nullptr;
        of_closed = object->get_accName(part(8), &name);
        object->Release();
    }
    void operator()() {
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        void* object = nullptr;
        if (AccessibleObjectFromWindow(window, DWORD(OBJID_CLIENT), __uuidof(IAccessible),
                                       &object) == S_OK) {
            use(static_cast<IAccessible*>(object));
        }
        CoUninitialize();
        done = true;
    }
};

TEST(WindowsAccessible, AnswersThroughTheMessageLoop) {
    auto window = std::make_unique<PopulationWindow>(small_params(8));
    Reader reader;
    reader.window = window->handle();
    std::thread thread(std::ref(reader));
    const auto wait_for = [&reader](const std::atomic<bool>& event) {
        user::Script script(end_script);
        script.await("the other thread", [&] { return event || reader.done; });
        run(script);
    };
    wait_for(reader.read);
    settle();
    EXPECT_EQ(reader.names, (Texts{"Population of 8 turtles", "Turtle 8"}));
    EXPECT_EQ(reader.selected, S_OK);
    EXPECT_EQ(window->record()->selected, 7);
    window.reset();
    reader.closed = true;
    wait_for(reader.done);
    thread.join();
    EXPECT_EQ(reader.of_closed, CO_E_OBJNOTCONNECTED);
}

} // namespace
