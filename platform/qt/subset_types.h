// The types of subset.h. Include platform/win32.h instead.
#pragma once

#include <cstddef>
#include <cstdint>

#define CALLBACK
#define WINAPI

using BOOL = int;
using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = unsigned int;
using LONG = std::int32_t;
using SHORT = std::int16_t;
using ATOM = WORD;
using COLORREF = DWORD; // 0x00BBGGRR
using LPSTR = char*;
using LPCSTR = const char*;
using LPVOID = void*;
using INT_PTR = std::intptr_t;
using DWORD_PTR = std::uintptr_t;
using UINT_PTR = std::uintptr_t;
using SIZE_T = std::size_t;
using LONG_PTR = std::intptr_t;
using WPARAM = UINT_PTR;
using LPARAM = LONG_PTR;
using LRESULT = LONG_PTR;

#define FALSE 0
#define TRUE 1

// Handles are opaque; most kinds have a type of their own, which the compiler checks.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): the real names
using HANDLE = void*;
using HGDIOBJ = void*;
using HWND = struct HWND__*;
using HDC = struct HDC__*;
using HPEN = struct HPEN__*;
using HBRUSH = struct HBRUSH__*;
using HBITMAP = struct HBITMAP__*;
using HMENU = struct HMENU__*;
using HACCEL = struct HACCEL__*;
using HINSTANCE = struct HINSTANCE__*;
using HICON = struct HICON__*;
using HENHMETAFILE = struct HENHMETAFILE__*;
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
using HCURSOR = HICON;
using HGLOBAL = HANDLE;

struct POINT {
    LONG x;
    LONG y;
};

struct RECT {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};

struct MSG {
    HWND hwnd;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    DWORD time;
    POINT pt;
};

struct PAINTSTRUCT {
    HDC hdc;
    BOOL fErase;
    RECT rcPaint;
};

using WNDPROC = LRESULT(CALLBACK*)(HWND, UINT, WPARAM, LPARAM);
using DLGPROC = INT_PTR(CALLBACK*)(HWND, UINT, WPARAM, LPARAM);
using SUBCLASSPROC = LRESULT(CALLBACK*)(HWND, UINT, WPARAM, LPARAM, UINT_PTR, DWORD_PTR);

struct WNDCLASSEXA {
    UINT cbSize;
    UINT style;
    WNDPROC lpfnWndProc;
    int cbClsExtra; // Here: must be 0.
    int cbWndExtra;
    HINSTANCE hInstance;
    HICON hIcon;
    HCURSOR hCursor;
    HBRUSH hbrBackground; // a system colour + 1, or a brush
    LPCSTR lpszMenuName;
    LPCSTR lpszClassName;
    HICON hIconSm;
};

using LPOFNHOOKPROC = UINT_PTR(CALLBACK*)(HWND, UINT, WPARAM, LPARAM);

// Here: the fields that the program uses.
struct OPENFILENAMEA {
    DWORD lStructSize;
    HWND hwndOwner;
    LPCSTR lpstrFilter; // pairs of text and pattern, each zero-terminated, and a final zero
    DWORD nFilterIndex; // from 1
    LPSTR lpstrFile;    // out: the full path. Here: not read as a proposed name
    DWORD nMaxFile;     // size of the buffer in bytes
    DWORD Flags;
    LPARAM lCustData;
    LPOFNHOOKPROC lpfnHook; // null: none
};

// Here: the fields that the program uses; hDevMode and hDevNames stay null.
struct PRINTDLGA {
    DWORD lStructSize;
    HWND hwndOwner;
    HGLOBAL hDevMode;
    HGLOBAL hDevNames;
    HDC hDC;
    DWORD Flags;
    WORD nFromPage;
    WORD nToPage;
    WORD nMinPage;
    WORD nMaxPage;
    WORD nCopies;
};

// Here: the fields that the program uses.
struct DOCINFOA {
    int cbSize;
    LPCSTR lpszDocName;
};

using ABORTPROC = BOOL(CALLBACK*)(HDC, int);

struct INITCOMMONCONTROLSEX {
    DWORD dwSize;
    DWORD dwICC;
};

struct NMHDR {
    HWND hwndFrom;
    UINT_PTR idFrom;
    UINT code;
};

struct OFNOTIFYA {
    NMHDR hdr;
    OPENFILENAMEA* lpOFN; // lpstrFile is the chosen file
};

struct NMUPDOWN {
    NMHDR hdr;
    int iPos;
    int iDelta;
};

// clang-format off
constexpr WORD LOWORD(std::uintptr_t v) { return static_cast<WORD>(v & 0xFFFFU); }
constexpr WORD HIWORD(std::uintptr_t v) { return static_cast<WORD>((v >> 16U) & 0xFFFFU); }
constexpr WPARAM MAKEWPARAM(unsigned low, unsigned high) { return (low & 0xFFFFU) | ((high & 0xFFFFU) << 16U); }
constexpr LPARAM MAKELPARAM(unsigned low, unsigned high) { return static_cast<LPARAM>(MAKEWPARAM(low, high)); }
constexpr COLORREF RGB(unsigned r, unsigned g, unsigned b) { return (r & 0xFFU) | ((g & 0xFFU) << 8U) | ((b & 0xFFU) << 16U); }
inline LPSTR MAKEINTRESOURCEA(WORD id) { return reinterpret_cast<LPSTR>(static_cast<UINT_PTR>(id)); }
// clang-format on
