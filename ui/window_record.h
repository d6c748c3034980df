// Records on windows: the window owns its record, which it keeps in bytes of its own.
#pragma once

#include "platform/win32.h"

#include <memory>

namespace pelmora {

// The record of a window, or null before it is attached and after it was detached.
template <class Record>
Record* attached_record(HWND window) {
    return reinterpret_cast<Record*>(GetWindowLongPtrA(window, 0));
}

// Gives the window its record, which learns its handle.
template <class Record>
void attach_record(HWND window, std::unique_ptr<Record> record) {
    record->hwnd = window;
    SetWindowLongPtrA(window, 0, reinterpret_cast<LONG_PTR>(record.release()));
}

// Takes the record back.
template <class Record>
std::unique_ptr<Record> detach_record(HWND window) {
    return std::unique_ptr<Record>(reinterpret_cast<Record*>(SetWindowLongPtrA(window, 0, 0)));
}

} // namespace pelmora
