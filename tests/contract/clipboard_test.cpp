// The clipboard and the memory that goes over it.
#include "tests/contract/test_windows.h"

#include <cstring>
#include <string>

namespace {

using namespace pelmora_test;

class Clipboards : public Windows {
  protected:
    static HGLOBAL block(const std::string& text) {
        HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
        std::memcpy(GlobalLock(memory), text.c_str(), text.size() + 1);
        GlobalUnlock(memory);
        return memory;
    }
    // The text that is there; the clipboard is open.
    static std::string text() {
        HANDLE data = GetClipboardData(CF_TEXT);
        const void* bytes = data != nullptr ? GlobalLock(data) : nullptr;
        std::string found = bytes != nullptr ? static_cast<const char*>(bytes) : "(none)";
        GlobalUnlock(data);
        return found;
    }
};

TEST_F(Clipboards, BelongToWhoeverEmptiedThem) {
    ASSERT_TRUE(OpenClipboard(window_));
    EXPECT_TRUE(EmptyClipboard());
    EXPECT_FALSE(IsClipboardFormatAvailable(CF_TEXT));
    EXPECT_EQ(GetClipboardData(CF_TEXT), nullptr);
    HGLOBAL memory = block("( FWD_1 )\n");
    EXPECT_EQ(SetClipboardData(CF_TEXT, memory), memory);
    HDC device = CreateEnhMetaFileA(nullptr, nullptr, nullptr, nullptr);
    LineTo(device, 100, 50);
    HENHMETAFILE picture = CloseEnhMetaFile(device);
    EXPECT_EQ(SetClipboardData(CF_ENHMETAFILE, picture), picture);
    EXPECT_TRUE(CloseClipboard());
    EXPECT_FALSE(CloseClipboard());

    // What was set stays, however often it is looked at.
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(IsClipboardFormatAvailable(CF_TEXT));
        ASSERT_TRUE(OpenClipboard(window_));
        EXPECT_EQ(text(), "( FWD_1 )\n");
        EXPECT_TRUE(CloseClipboard());
    }
    EXPECT_EQ(user::copied("image/x-emf").substr(40, 4), " EMF");

    // Other texts replace it, the picture too.
    ASSERT_TRUE(OpenClipboard(window_));
    EXPECT_TRUE(EmptyClipboard());
    SetClipboardData(CF_TEXT, block("other"));
    EXPECT_TRUE(CloseClipboard());
    EXPECT_EQ(user::copied("text/plain"), "other");
    EXPECT_EQ(user::copied("image/x-emf"), "");
}

TEST_F(Clipboards, NeedToBeOpen) {
    EXPECT_FALSE(EmptyClipboard());
    EXPECT_EQ(GetClipboardData(CF_TEXT), nullptr);
    HGLOBAL memory = block("x");
    EXPECT_EQ(SetClipboardData(CF_TEXT, memory), nullptr);
    EXPECT_EQ(GlobalFree(memory), nullptr); // still the caller's
}

} // namespace
