// Records of windows: a window owns its record, whose pointer is in its extra bytes.
#pragma once

#include "platform/win32.h"

#include <memory>

namespace pelmora {

// The record of a window; null before it is attached and after it is detached.
template <class Record>
Record* attached_record(HWND window) {
    return reinterpret_cast<Record*>(GetWindowLongPtrA(window, 0));
}

// Makes the window the owner of the record and stores its handle there.
template <class Record>
void attach_record(HWND window, std::unique_ptr<Record> record) {
    record->hwnd = window;
    SetWindowLongPtrA(window, 0, reinterpret_cast<LONG_PTR>(record.release()));
}

// Moves the record's ownership to the caller.
template <class Record>
std::unique_ptr<Record> detach_record(HWND window) {
    return std::unique_ptr<Record>(reinterpret_cast<Record*>(SetWindowLongPtrA(window, 0, 0)));
}

} // namespace pelmora
