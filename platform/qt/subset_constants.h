// The constants of subset.h. Include platform/win32.h instead.
#pragma once

#include "platform/qt/subset_types.h"

// clang-format off
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
constexpr UINT WM_INITMENU = 0x0116; // Here: this and the next are never sent.
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
constexpr int VK_ESCAPE = 0x1B;
constexpr int VK_SPACE = 0x20;
constexpr int VK_END = 0x23;
constexpr int VK_HOME = 0x24;
constexpr int VK_LEFT = 0x25;
constexpr int VK_UP = 0x26;
constexpr int VK_RIGHT = 0x27;
constexpr int VK_DOWN = 0x28;
constexpr WORD KF_REPEAT = 0x4000; // in the high word of lParam: the key was down before
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
constexpr DWORD WS_EX_CLIENTEDGE = 0x00000200; // Here: not drawn.
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
constexpr int OBJ_PEN = 1; // Here: the only kind that GetCurrentObject supports
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

constexpr int DWLP_MSGRESULT = 0; // offsets of a dialog's extra bytes: the result of a message
constexpr int DWLP_USER = 16;     // for the dialog procedure's use
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
// Here: pages and a selection cannot be chosen, whatever the flags; copies are always made by the
// printer; printing to a file is an entry of the printer list and cannot be hidden.
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
