// The modal alert for every failure and refusal.
//
// While it is open other windows still get messages, so any window, its owner included, may be
// destroyed when it returns: callers check IsWindow() first.
#pragma once

#include "platform/win32.h"

namespace pelmora {

// A format for one int, checked at compile time: a text with exactly one "%d". "%%" is a percent
// sign.
class MessageFormat {
  public:
    // Implicit, so that callers pass a string literal.
    consteval MessageFormat(const char* text) : text_(text) {
        int values = 0;
        for (; *text != '\0'; ++text) {
            if (*text != '%' || *++text == '%') {
                continue;
            }
            if (*text != 'd') {
                throw "a message shows nothing but an int";
            }
            ++values;
        }
        if (values != 1) {
            throw "a message format has exactly one %d";
        }
    }
    [[nodiscard]] const char* text() const { return text_; }

  private:
    const char* text_;
};

// Shows `text`, cut to 511 bytes, until the user dismisses the alert; null shows the previous text
// again. `owner` may be null. The result is 1, or -1 when the alert could not be shown or was
// destroyed with its owner.
INT_PTR ShowMessage(HWND owner, const char* text);

// The same with a text made from `format` and `value`.
INT_PTR ShowMessageF(HWND owner, MessageFormat format, int value);

} // namespace pelmora
