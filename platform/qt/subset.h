// The subset of Win32 that the program uses, with its real names, signatures and values. Include it
// through platform/win32.h only.
//
// A line that begins with "Here:" says where this layer differs from Windows. Texts ("A" calls) are
// UTF-8. A call that nothing uses any more leaves this file.
#pragma once

#include <cstddef>
#include <cstdint>

// --- Types ---------------------------------------------------------------------------------------

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

// Handles are opaque; each kind is a type of its own, so that the compiler tells them apart.
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
    LPCSTR lpstrFilter; // pairs of a text and a pattern, each with its zero, and one more zero
    DWORD nFilterIndex; // from 1
    LPSTR lpstrFile;    // out: the full path. Here: no name is proposed
    DWORD nMaxFile;     // bytes of room
    DWORD Flags;
    LPARAM lCustData;
    LPOFNHOOKPROC lpfnHook; // null: none
};

// Here: the fields that the program uses; both memory handles stay null.
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
    OPENFILENAMEA* lpOFN; // its file is what the user chose
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

// --- Constants -----------------------------------------------------------------------------------

// Window messages
constexpr UINT WM_NULL = 0x0000;
constexpr UINT WM_CREATE = 0x0001;
constexpr UINT WM_DESTROY = 0x0002;
constexpr UINT WM_SIZE = 0x0005;
constexpr UINT WM_PAINT = 0x000F;
constexpr UINT WM_CLOSE = 0x0010;
constexpr UINT WM_QUIT = 0x0012;
constexpr UINT WM_ERASEBKGND = 0x0014;
constexpr UINT WM_NOTIFY = 0x004E;
constexpr UINT WM_NCDESTROY = 0x0082;
constexpr UINT WM_KEYDOWN = 0x0100;
constexpr UINT WM_CHAR = 0x0102;
constexpr UINT WM_SYSKEYDOWN = 0x0104;
constexpr UINT WM_SYSCHAR = 0x0106;
constexpr UINT WM_INITDIALOG = 0x0110;
constexpr UINT WM_COMMAND = 0x0111;
constexpr UINT WM_HSCROLL = 0x0114;
constexpr UINT WM_INITMENU = 0x0116; // Here: neither this nor the next is ever sent.
constexpr UINT WM_INITMENUPOPUP = 0x0117;
constexpr UINT WM_MOUSEMOVE = 0x0200;
constexpr UINT WM_LBUTTONDOWN = 0x0201;
constexpr UINT WM_LBUTTONUP = 0x0202;
constexpr UINT WM_LBUTTONDBLCLK = 0x0203;
constexpr UINT WM_RBUTTONDOWN = 0x0204;
constexpr UINT WM_RBUTTONUP = 0x0205;
constexpr UINT WM_RBUTTONDBLCLK = 0x0206;
constexpr UINT WM_USER = 0x0400;

// Keys
constexpr int VK_TAB = 0x09;
constexpr int VK_RETURN = 0x0D;
constexpr int VK_SHIFT = 0x10;
constexpr WORD KF_REPEAT = 0x4000; // of the lParam's upper half: the key was down before
constexpr UINT PM_NOREMOVE = 0x0000;
constexpr UINT PM_REMOVE = 0x0001;

// Mouse message flags
constexpr WPARAM MK_LBUTTON = 0x0001;
constexpr WPARAM MK_RBUTTON = 0x0002;
constexpr WPARAM MK_SHIFT = 0x0004;
constexpr WPARAM MK_CONTROL = 0x0008;

// Window and class styles
constexpr DWORD WS_OVERLAPPED = 0x00000000;
constexpr DWORD WS_VISIBLE = 0x10000000;
constexpr DWORD WS_CAPTION = 0x00C00000;
constexpr DWORD WS_SYSMENU = 0x00080000;
constexpr DWORD WS_THICKFRAME = 0x00040000;
constexpr DWORD WS_MINIMIZEBOX = 0x00020000;
constexpr DWORD WS_MAXIMIZEBOX = 0x00010000;
constexpr DWORD WS_OVERLAPPEDWINDOW = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX;
constexpr DWORD WS_EX_WINDOWEDGE = 0x00000100;
constexpr DWORD WS_EX_CLIENTEDGE = 0x00000200; // Here: drawn by no frame of its own.
constexpr DWORD WS_EX_OVERLAPPEDWINDOW = WS_EX_WINDOWEDGE | WS_EX_CLIENTEDGE;
constexpr UINT CS_VREDRAW = 0x0001;
constexpr UINT CS_HREDRAW = 0x0002;
constexpr UINT CS_DBLCLKS = 0x0008;
constexpr DWORD WS_CHILD = 0x40000000;
constexpr DWORD WS_BORDER = 0x00800000;
constexpr DWORD ES_NUMBER = 0x2000;
constexpr DWORD BS_DEFPUSHBUTTON = 0x0001;
constexpr int SW_HIDE = 0;
constexpr int SW_SHOWNORMAL = 1;
constexpr int SW_SHOW = 5;

constexpr UINT RDW_INVALIDATE = 0x0001;
constexpr UINT RDW_ERASE = 0x0004;
constexpr UINT SPI_GETWORKAREA = 0x0030;

constexpr int COLOR_WINDOW = 5;
constexpr int WHITE_BRUSH = 0;
constexpr int BLACK_BRUSH = 4;
constexpr int BLACK_PEN = 7;
constexpr int PS_SOLID = 0;
constexpr int OBJ_PEN = 1; // GetCurrentObject; Here: the only kind it knows
constexpr int HORZRES = 8;
constexpr int VERTRES = 10;
constexpr int PHYSICALWIDTH = 110; // this and the next three: printers only
constexpr int PHYSICALHEIGHT = 111;
constexpr int PHYSICALOFFSETX = 112;
constexpr int PHYSICALOFFSETY = 113;
constexpr int MM_TEXT = 1;
constexpr int MM_LOMETRIC = 2;
constexpr int MM_HIMETRIC = 3;
constexpr int MM_LOENGLISH = 4;
constexpr int MM_HIENGLISH = 5;
constexpr int HALFTONE = 4;
constexpr DWORD SRCCOPY = 0x00CC0020;
constexpr COLORREF CLR_INVALID = 0xFFFFFFFF;
constexpr UINT DT_BOTTOM = 0x0008;
constexpr UINT DT_SINGLELINE = 0x0020;
constexpr UINT DT_NOPREFIX = 0x0800;

constexpr int DWLP_MSGRESULT = 0; // of a dialog's own bytes, those for what a message results in
constexpr int DWLP_USER = 16;     // and those for its procedure's use
constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;
constexpr int IDYES = 6;
constexpr int IDNO = 7;
constexpr UINT MB_OK = 0x0000;
constexpr UINT MB_YESNO = 0x0004;
constexpr UINT MB_ICONWARNING = 0x0030;
constexpr UINT MB_DEFBUTTON2 = 0x0100;

// Clipboard and memory
constexpr UINT CF_TEXT = 1;
constexpr UINT CF_ENHMETAFILE = 14;
constexpr UINT GMEM_MOVEABLE = 0x0002;

// System dialogs
constexpr DWORD OFN_HIDEREADONLY = 0x00000004;
constexpr DWORD OFN_NOCHANGEDIR = 0x00000008;
constexpr DWORD OFN_ENABLEHOOK = 0x00000020;
constexpr DWORD OFN_PATHMUSTEXIST = 0x00000800;
constexpr DWORD OFN_FILEMUSTEXIST = 0x00001000;
constexpr DWORD OFN_EXPLORER = 0x00080000;
constexpr DWORD OFN_ENABLESIZING = 0x00800000;
constexpr UINT CDN_FILEOK = static_cast<UINT>(-606);
// Here: neither pages nor a selection can be chosen, whatever the flags say; copies are always the
// printer's business; a file is a printer of its own and is not hidden.
constexpr DWORD PD_NOSELECTION = 0x00000004;
constexpr DWORD PD_NOPAGENUMS = 0x00000008;
constexpr DWORD PD_RETURNDC = 0x00000100;
constexpr DWORD PD_USEDEVMODECOPIESANDCOLLATE = 0x00040000;
constexpr DWORD PD_HIDEPRINTTOFILE = 0x00100000;

// Controls
constexpr DWORD ICC_BAR_CLASSES = 0x0004;
constexpr DWORD ICC_UPDOWN_CLASS = 0x0010;
constexpr WORD BN_CLICKED = 0;
constexpr UINT BST_UNCHECKED = 0;
constexpr UINT BST_CHECKED = 1;
constexpr UINT BM_CLICK = 0x00F5;
constexpr UINT TBM_GETPOS = WM_USER;
constexpr UINT TBM_GETRANGEMIN = WM_USER + 1;
constexpr UINT TBM_GETRANGEMAX = WM_USER + 2;
constexpr UINT TBM_SETPOS = WM_USER + 5;
constexpr UINT TBM_SETRANGE = WM_USER + 6;
constexpr UINT TBM_SETTICFREQ = WM_USER + 20;
constexpr UINT TBM_SETPAGESIZE = WM_USER + 21;
constexpr UINT TBM_SETLINESIZE = WM_USER + 23;
constexpr WORD TB_LINEUP = 0;
constexpr WORD TB_LINEDOWN = 1;
constexpr WORD TB_PAGEUP = 2;
constexpr WORD TB_PAGEDOWN = 3;
constexpr WORD TB_THUMBPOSITION = 4;
constexpr WORD TB_THUMBTRACK = 5;
constexpr WORD TB_TOP = 6;
constexpr WORD TB_BOTTOM = 7;
constexpr WORD TB_ENDTRACK = 8;
// Here: an up-down control sends no scroll messages.
constexpr UINT UDM_SETBUDDY = WM_USER + 105;
constexpr UINT UDM_GETBUDDY = WM_USER + 106;
constexpr UINT UDN_DELTAPOS = static_cast<UINT>(-722);

// Errors
constexpr DWORD ERROR_SUCCESS = 0;
constexpr DWORD ERROR_PATH_NOT_FOUND = 3;
constexpr DWORD ERROR_ACCESS_DENIED = 5;
constexpr DWORD ERROR_INVALID_HANDLE = 6;
constexpr DWORD ERROR_NOT_ENOUGH_MEMORY = 8;
constexpr DWORD ERROR_WRITE_FAULT = 29;
constexpr DWORD ERROR_INVALID_PARAMETER = 87;
constexpr DWORD ERROR_INVALID_WINDOW_HANDLE = 1400;
constexpr DWORD ERROR_CANNOT_FIND_WND_CLASS = 1407;
constexpr DWORD ERROR_CLASS_ALREADY_EXISTS = 1410;
constexpr DWORD ERROR_INVALID_INDEX = 1413;
constexpr DWORD ERROR_CLIPBOARD_NOT_OPEN = 1418;
// clang-format on

#define INVALID_HANDLE_VALUE (reinterpret_cast<HANDLE>(LONG_PTR{-1}))

#define IDC_ARROW MAKEINTRESOURCEA(32512)
#define IDC_WAIT MAKEINTRESOURCEA(32514)

// --- Calls ---------------------------------------------------------------------------------------

extern "C" {

// The program's entry point, which the layer calls once its own start-up is done.
int WINAPI WinMain(HINSTANCE instance, HINSTANCE previous, LPSTR command_line, int show);

DWORD GetLastError();
void SetLastError(DWORD error);

// Resources. They live as long as the process; nothing releases them.
int LoadStringA(HINSTANCE instance, UINT id, LPSTR buffer, int size);
HACCEL LoadAcceleratorsA(HINSTANCE instance, LPCSTR name);
HICON LoadIconA(HINSTANCE instance, LPCSTR name);
HCURSOR LoadCursorA(HINSTANCE instance, LPCSTR name);
HCURSOR SetCursor(HCURSOR cursor); // Here: holds until set again, over every window.

// Makes the classes of controls known that are not the system's core ones: sliders and up-downs.
// Here: they are, and nothing happens.
BOOL InitCommonControlsEx(const INITCOMMONCONTROLSEX* controls);

// Window classes and windows
ATOM RegisterClassExA(const WNDCLASSEXA* window_class);
// Here: top-level windows of registered classes, always with the styles of an overlapped window,
// and in them the child controls "EDIT" and "BUTTON", whose `menu` is their id. Children lie over
// what their window draws, and tell it of clicks only. WM_CREATE brings `parameter` itself. The
// window manager's frame is not known before the first window is on the screen: that one's outer
// size is put right then.
HWND CreateWindowExA(DWORD extended_style, LPCSTR class_name, LPCSTR title, DWORD style, int x,
                     int y, int width, int height, HWND parent, HMENU menu, HINSTANCE instance,
                     LPVOID parameter);
BOOL DestroyWindow(HWND window);
BOOL IsWindow(HWND window);
BOOL ShowWindow(HWND window, int show);
BOOL UpdateWindow(HWND window);
HWND SetFocus(HWND window);                              // Here: no dialogs.
int GetWindowTextA(HWND window, LPSTR buffer, int size); // Here: controls only.
BOOL MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint);
BOOL GetClientRect(HWND window, RECT* rect);
BOOL GetWindowRect(HWND window, RECT* rect);
HWND GetDesktopWindow();
LONG_PTR GetWindowLongPtrA(HWND window, int index); // Here: bytes of the window's own only.
LONG_PTR SetWindowLongPtrA(HWND window, int index, LONG_PTR value);
LRESULT DefWindowProcA(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
BOOL SystemParametersInfoA(UINT action, UINT parameter, void* data, UINT flags);

// Messages
BOOL GetMessageA(MSG* message, HWND window, UINT first, UINT last); // Here: no filter.
// Here: of any window. What was drawn reaches the screen, and input that has arrived is queued.
BOOL PeekMessageA(MSG* message, HWND window, UINT first, UINT last, UINT remove);
SHORT GetKeyState(int key); // Here: VK_SHIFT only.
int TranslateAcceleratorA(HWND window, HACCEL accelerators, MSG* message);
BOOL TranslateMessage(const MSG* message);
LRESULT DispatchMessageA(const MSG* message);
// Here: a window has one procedure in front of its own, for good.
BOOL SetWindowSubclass(HWND window, SUBCLASSPROC procedure, UINT_PTR id, DWORD_PTR data);
LRESULT DefSubclassProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
LRESULT SendMessageA(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
BOOL PostMessageA(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
void PostQuitMessage(int exit_code);

// Dialogs
// Here: what takes the keyboard is a tab stop, whatever its style says, and every open dialog knows
// its keys, not only the one that was opened last. A dialog whose owner goes, or whose program is
// quit, results in -1, on Windows also in 0 or 1.
INT_PTR DialogBoxParamA(HINSTANCE instance, LPCSTR name, HWND owner, DLGPROC procedure,
                        LPARAM parameter);
BOOL EndDialog(HWND dialog, INT_PTR result);
HWND GetDlgItem(HWND dialog, int id);
int GetDlgCtrlID(HWND control);
BOOL SetDlgItemTextA(HWND dialog, int id, LPCSTR text);
UINT GetDlgItemTextA(HWND dialog, int id, LPSTR buffer, int size);
BOOL CheckDlgButton(HWND dialog, int id, UINT check);
UINT IsDlgButtonChecked(HWND dialog, int id);

// System dialogs. False when the user cancelled, the name has no room, or the owner went away.
// Here: a save dialog adds no extension and asks about no existing file; the next dialog begins in
// the folder of the file chosen last; a name that is not UTF-8 cannot be chosen. A hook is told
// CDN_FILEOK and nothing else, under a handle that is good for refusing and for MessageBoxA only.
BOOL GetOpenFileNameA(OPENFILENAMEA* dialog);
BOOL GetSaveFileNameA(OPENFILENAMEA* dialog);
// Here: only from the hook of a file dialog, with the warning sign, and with OK or with Yes and No,
// of which No is what Return and Escape press.
int MessageBoxA(HWND owner, LPCSTR text, LPCSTR caption, UINT type);
// Here: a printer's own properties are shown in a loop of the toolkit, in which no window paints.
BOOL PrintDlgA(PRINTDLGA* dialog);

// Clipboard. What is set belongs to the clipboard.
// Here: what other programs see changes when it is closed, if it was emptied.
BOOL OpenClipboard(HWND owner); // Here: fails only while another window of ours holds it.
BOOL CloseClipboard();
BOOL EmptyClipboard();
BOOL IsClipboardFormatAvailable(UINT format);      // Here: CF_TEXT only.
HANDLE GetClipboardData(UINT format);              // Here: CF_TEXT only, from any text.
HANDLE SetClipboardData(UINT format, HANDLE data); // Here: once it was emptied.

HGLOBAL GlobalAlloc(UINT flags, SIZE_T bytes); // Here: movable blocks only.
HGLOBAL GlobalFree(HGLOBAL memory);
LPVOID GlobalLock(HGLOBAL memory);
BOOL GlobalUnlock(HGLOBAL memory);

void Sleep(DWORD milliseconds);

// Painting
HDC BeginPaint(HWND window, PAINTSTRUCT* paint);
BOOL EndPaint(HWND window, const PAINTSTRUCT* paint);
// Here: these two need a window.
BOOL InvalidateRect(HWND window, const RECT* rect, BOOL erase);
BOOL RedrawWindow(HWND window, const RECT* rect, void* region, UINT flags); // Here: no region.
HDC GetDC(HWND window);
int ReleaseDC(HWND window, HDC device);
HDC CreateCompatibleDC(HDC device);
BOOL DeleteDC(HDC device);
// Here: always in full colour, and never without pixels.
HBITMAP CreateCompatibleBitmap(HDC device, int width, int height);
int GetDeviceCaps(HDC device, int index);
int SetStretchBltMode(HDC device, int mode);

// Enhanced metafiles. `frame` is in hundredths of a millimetre, null for the picture's own; a null
// file name keeps the metafile in memory.
// Here: no reference device but the screen; the file appears whole, when the metafile is closed;
// whatever cannot be written is ERROR_PATH_NOT_FOUND.
HDC CreateEnhMetaFileA(HDC reference, LPCSTR file, const RECT* frame, LPCSTR description);
HENHMETAFILE CloseEnhMetaFile(HDC device);
BOOL DeleteEnhMetaFile(HENHMETAFILE metafile);
int SetMapMode(HDC device, int mode); // Here: metafiles record it; others know MM_TEXT only.

// Printing
int SetAbortProc(HDC device, ABORTPROC procedure);
int StartDocA(HDC device, const DOCINFOA* document);
int EndDoc(HDC device);
int StartPage(HDC device);
int EndPage(HDC device);

HGDIOBJ GetCurrentObject(HDC device, UINT kind);
HGDIOBJ GetStockObject(int object);
HPEN CreatePen(int style, int width, COLORREF color);
HBRUSH CreateSolidBrush(COLORREF color);
// Here: pens and bitmaps only; the first bitmap of a memory device context replaces none.
HGDIOBJ SelectObject(HDC device, HGDIOBJ object);
BOOL DeleteObject(HGDIOBJ object); // Here: a selected bitmap stays, and that is no success.

BOOL MoveToEx(HDC device, int x, int y, POINT* previous);
BOOL LineTo(HDC device, int x, int y);
BOOL Polyline(HDC device, const POINT* points, int count); // Here: surfaces only, no joins.
int FillRect(HDC device, const RECT* rect, HBRUSH brush);  // Here: an inverted one is empty.
int FrameRect(HDC device, const RECT* rect, HBRUSH brush);
// Here: from another surface only, and to the right and down.
BOOL BitBlt(HDC device, int x, int y, int width, int height, HDC source, int source_x, int source_y,
            DWORD operation);
BOOL RectVisible(HDC device, const RECT* rect);
COLORREF GetPixel(HDC device, int x, int y);
// Here: always one line at the bottom left, in black, without prefixes.
int DrawTextA(HDC device, LPCSTR text, int length, RECT* rect, UINT format);

} // extern "C"
