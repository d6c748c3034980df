// The subset of Win32 that the program uses, with its real names, signatures and values. Include it
// through platform/win32.h only.
//
// A line that begins with "Here:" says where this layer differs from Windows. Texts ("A" calls) are
// UTF-8. A call that nothing uses any more leaves this file.
#pragma once

#include "platform/qt/subset_constants.h"
#include "platform/qt/subset_types.h"

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
