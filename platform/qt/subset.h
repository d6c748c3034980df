// The subset of Win32 that the program uses, with the real names, signatures and values. Include
// platform/win32.h instead.
//
// "Here:" marks where this layer differs from Windows. Texts ("A" calls) are UTF-8. Declarations
// without a user are removed.
#pragma once

#include "platform/qt/subset_constants.h"
#include "platform/qt/subset_types.h"

extern "C" {

// The program's entry point. The layer's main() calls it.
int WINAPI WinMain(HINSTANCE instance, HINSTANCE previous, LPSTR command_line, int show);

DWORD GetLastError();
void SetLastError(DWORD error);

// Resources. They are never released.
int LoadStringA(HINSTANCE instance, UINT id, LPSTR buffer, int size);
HACCEL LoadAcceleratorsA(HINSTANCE instance, LPCSTR name);
HICON LoadIconA(HINSTANCE instance, LPCSTR name);
HCURSOR LoadCursorA(HINSTANCE instance, LPCSTR name);
HCURSOR SetCursor(HCURSOR cursor); // Here: affects all windows until the next call.

// Registers the classes of sliders and up-down controls.
// Here: does nothing, as they are always registered.
BOOL InitCommonControlsEx(const INITCOMMONCONTROLSEX* controls);

// Window classes and windows
ATOM RegisterClassExA(const WNDCLASSEXA* window_class);
// Here: creates top-level windows of registered classes, always with the styles of an overlapped
// window, and in them the child controls "EDIT" and "BUTTON", whose `menu` is their id. Children
// cover what their window draws; the only notification they send is BN_CLICKED. The lParam of
// WM_CREATE is `parameter` itself. The size of the window manager's frame is unknown before the
// first window is shown; that window's outer size is corrected then.
HWND CreateWindowExA(DWORD extended_style, LPCSTR class_name, LPCSTR title, DWORD style, int x,
                     int y, int width, int height, HWND parent, HMENU menu, HINSTANCE instance,
                     LPVOID parameter);
BOOL DestroyWindow(HWND window);
BOOL IsWindow(HWND window);
BOOL ShowWindow(HWND window, int show);
BOOL UpdateWindow(HWND window);
HWND SetFocus(HWND window);                              // Here: not for dialogs.
int GetWindowTextA(HWND window, LPSTR buffer, int size); // Here: controls only.
BOOL MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint);
BOOL GetClientRect(HWND window, RECT* rect);
BOOL GetWindowRect(HWND window, RECT* rect);
HWND GetDesktopWindow();
LONG_PTR GetWindowLongPtrA(HWND window, int index); // Here: extra bytes only.
LONG_PTR SetWindowLongPtrA(HWND window, int index, LONG_PTR value);
LRESULT DefWindowProcA(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
BOOL SystemParametersInfoA(UINT action, UINT parameter, void* data, UINT flags);

// Messages
BOOL GetMessageA(MSG* message, HWND window, UINT first, UINT last); // Here: no filter.
// Here: ignores `window`. Also shows what was drawn and queues pending input.
BOOL PeekMessageA(MSG* message, HWND window, UINT first, UINT last, UINT remove);
SHORT GetKeyState(int key); // Here: VK_SHIFT only.
int TranslateAcceleratorA(HWND window, HACCEL accelerators, MSG* message);
BOOL TranslateMessage(const MSG* message);
LRESULT DispatchMessageA(const MSG* message);
// Here: one subclass per window, which cannot be removed.
BOOL SetWindowSubclass(HWND window, SUBCLASSPROC procedure, UINT_PTR id, DWORD_PTR data);
LRESULT DefSubclassProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
LRESULT SendMessageA(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
BOOL PostMessageA(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
void PostQuitMessage(int exit_code);

// Dialogs
// Here: every control that can have the focus is a tab stop, whatever its style. Every open dialog
// handles its keys, not only the newest. The result is -1 when the owner is destroyed or the
// program quits; on Windows it may also be 0 or 1.
INT_PTR DialogBoxParamA(HINSTANCE instance, LPCSTR name, HWND owner, DLGPROC procedure,
                        LPARAM parameter);
BOOL EndDialog(HWND dialog, INT_PTR result);
HWND GetDlgItem(HWND dialog, int id);
int GetDlgCtrlID(HWND control);
BOOL SetDlgItemTextA(HWND dialog, int id, LPCSTR text);
UINT GetDlgItemTextA(HWND dialog, int id, LPSTR buffer, int size);
BOOL CheckDlgButton(HWND dialog, int id, UINT check);
UINT IsDlgButtonChecked(HWND dialog, int id);

// System dialogs. False when the user cancelled, the name does not fit, or the owner was destroyed.
// Here: a save dialog adds no extension and does not ask about existing files; a dialog starts in
// the folder of the file chosen last; a name that is not UTF-8 cannot be chosen. A hook gets only
// CDN_FILEOK; its handle may be used only for refusing the name and for MessageBoxA.
BOOL GetOpenFileNameA(OPENFILENAMEA* dialog);
BOOL GetSaveFileNameA(OPENFILENAMEA* dialog);
// Here: only from the hook of a file dialog, always with the warning icon, with OK or with Yes and
// No; Return and Escape press No.
int MessageBoxA(HWND owner, LPCSTR text, LPCSTR caption, UINT type);
// Here: a printer's property dialog runs in an event loop of the toolkit, in which no window is
// painted.
BOOL PrintDlgA(PRINTDLGA* dialog);

// Clipboard. It owns the handles that are set.
// Here: closing it publishes the new data to other programs, if it was emptied.
// Here: fails only while it is open for another window of this program.
BOOL OpenClipboard(HWND owner);
BOOL CloseClipboard();
BOOL EmptyClipboard();
BOOL IsClipboardFormatAvailable(UINT format); // Here: CF_TEXT only.
HANDLE GetClipboardData(UINT format);         // Here: CF_TEXT only, converted from any text format.
HANDLE SetClipboardData(UINT format, HANDLE data); // Here: after EmptyClipboard only.

HGLOBAL GlobalAlloc(UINT flags, SIZE_T bytes); // Here: movable blocks only.
HGLOBAL GlobalFree(HGLOBAL memory);
LPVOID GlobalLock(HGLOBAL memory);
BOOL GlobalUnlock(HGLOBAL memory);

void Sleep(DWORD milliseconds);

// Painting
HDC BeginPaint(HWND window, PAINTSTRUCT* paint);
BOOL EndPaint(HWND window, const PAINTSTRUCT* paint);
// Here: `window` must not be null in these two.
BOOL InvalidateRect(HWND window, const RECT* rect, BOOL erase);
BOOL RedrawWindow(HWND window, const RECT* rect, void* region, UINT flags); // Here: no region.
HDC GetDC(HWND window);
int ReleaseDC(HWND window, HDC device);
HDC CreateCompatibleDC(HDC device);
BOOL DeleteDC(HDC device);
// Here: always 32-bit; the size must not be 0.
HBITMAP CreateCompatibleBitmap(HDC device, int width, int height);
int GetDeviceCaps(HDC device, int index);
int SetStretchBltMode(HDC device, int mode);

// Enhanced metafiles. `frame` is in 0.01 mm, null for the bounds of the drawing; a null file name
// keeps the metafile in memory.
// Here: the reference device is always the screen; closing the metafile replaces the file as a
// whole; the error for a file that cannot be written is always ERROR_PATH_NOT_FOUND.
HDC CreateEnhMetaFileA(HDC reference, LPCSTR file, const RECT* frame, LPCSTR description);
HENHMETAFILE CloseEnhMetaFile(HDC device);
BOOL DeleteEnhMetaFile(HENHMETAFILE metafile);
int SetMapMode(HDC device, int mode); // Here: MM_TEXT only, except in metafiles.

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
// Here: pens and bitmaps only; a memory device context has no bitmap at first, so null is returned.
HGDIOBJ SelectObject(HDC device, HGDIOBJ object);
BOOL DeleteObject(HGDIOBJ object); // Here: fails for a selected bitmap.

BOOL MoveToEx(HDC device, int x, int y, POINT* previous);
BOOL LineTo(HDC device, int x, int y);
// Here: not in metafiles and on printers; no line joins.
BOOL Polyline(HDC device, const POINT* points, int count);
int FillRect(HDC device, const RECT* rect, HBRUSH brush); // Here: an inverted rectangle is empty.
int FrameRect(HDC device, const RECT* rect, HBRUSH brush);
// Here: between different surfaces; width and height must not be negative.
BOOL BitBlt(HDC device, int x, int y, int width, int height, HDC source, int source_x, int source_y,
            DWORD operation);
BOOL RectVisible(HDC device, const RECT* rect);
COLORREF GetPixel(HDC device, int x, int y);
// Here: on windows only; ignores `format`: one line at the bottom left, in black, without prefixes,
// in a font that fits the height. GetPixel and BitBlt do not see the text, and only FillRect,
// FrameRect and BitBlt draw over it: it is kept apart from the pixels until it reaches the screen.
int DrawTextA(HDC device, LPCSTR text, int length, RECT* rect, UINT format);

} // extern "C"
