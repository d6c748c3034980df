/* The numbers of menus, commands, dialogs, controls, texts and icons: shared by the program and the
   resource script, so only the preprocessor's language is used here. */
#ifndef PELMORA_RESOURCES_RESOURCE_H
#define PELMORA_RESOURCES_RESOURCE_H

/* Icons */
#define IDI_ABOUT 107
#define IDI_SMALL 108
#define IDI_LARGE 109

/* Texts */
#define IDS_MAIN_TITLE 110
#define IDS_MAIN_CLASS 111
#define IDS_LOGO_CLASS 112
#define IDS_LOGO_TITLE 113
#define IDS_ENGINE_CLASS 114
#define IDS_ENGINE_TITLE 115

/* Menus and the accelerators of all windows */
#define IDR_MAIN_MENU 109
#define IDR_LOGO_MENU 110
#define IDR_ENGINE_MENU 134
#define IDR_ACCELERATORS 109

/* Commands */
#define IDM_ABOUT 104
#define IDM_EXIT 105
#define IDM_EVOLVE 32771
#define IDM_ALL_RETIRE 32772
#define IDM_ALL_LIVE 32773
#define IDM_NEW_POPULATION 32774
#define IDM_CUT 32775
#define IDM_COPY 32776
#define IDM_PASTE 32777
#define IDM_PRINT_TURTLE 32778
#define IDM_SAVE_POPULATION 32779
#define IDM_LOAD_POPULATION 32780
#define IDM_DELETE 32781
#define IDM_SAVE_TURTLE 32784
#define IDM_SAVE_EPS 32785
#define IDM_SAVE_METAFILE 32786
#define IDM_LOAD_TURTLE 32787
#define IDM_REVERT 32788
#define IDM_MUTATE 32789
#define IDM_CLOSE_EDITOR 32790
#define IDM_EDIT_TURTLE 32791
#define IDM_EVOLVE_FIVE 32792

/* Dialogs */
#define IDD_ABOUT 103
#define IDD_MESSAGE 130
#define IDD_METAFILE 131
#define IDD_PRINT 133
#define IDD_POPULATION 134

/* Controls of the metafile and the print dialog */
#define IDC_PEN_SIZE 1011
#define IDC_LOW_METRIC 1012
#define IDC_HIGH_METRIC 1013
#define IDC_LOW_ENGLISH 1014
#define IDC_HIGH_ENGLISH 1015
#define IDC_TEXT_MODE 1016

/* Controls of the turtle editor */
#define IDC_REDRAW 1961
#define IDC_LIMIT 1962

/* Controls of the alert and the About box */
#define IDC_MESSAGE_TEXT 1004
#define IDC_ABOUT_ADDRESS 1014

/* Controls of the Population Description dialog */
#define IDC_MAX_CHILDREN 1006
#define IDC_MAX_DEPTH 1007
#define IDC_TURTLES 1009
#define IDC_FWDMULT 1016
#define IDC_REPMULT 1017
#define IDC_RPTMULT 1018
#define IDC_CLRMULT 1019
#define IDC_LOOPMULT 1020
#define IDC_TURNMULT 1021
#define IDC_PCROSS 1022
#define IDC_PMUTATE 1023
#define IDC_PFNODE 1024
#define IDC_PCOLOR 1025
#define IDC_TURTLES_SPIN 1026
#define IDC_MAX_CHILDREN_SPIN 1027
#define IDC_MAX_DEPTH_SPIN 1028

/* Styles for the resource script, with the values of the platform, whose own header is not there
   wherever the script is compiled. The program gets them from that header instead. */
#ifdef RC_INVOKED

#define IDOK 1
#define IDCANCEL 2
#define IDC_STATIC (-1)

#define WS_POPUP 0x80000000
#define WS_CHILD 0x40000000
#define WS_VISIBLE 0x10000000
#define WS_CAPTION 0x00C00000
#define WS_BORDER 0x00800000
#define WS_SYSMENU 0x00080000
#define WS_THICKFRAME 0x00040000
#define WS_GROUP 0x00020000
#define WS_TABSTOP 0x00010000

#define DS_3DLOOK 0x0004
#define DS_MODALFRAME 0x0080
#define DS_CENTER 0x0800

#define SS_LEFT 0x0000
#define SS_RIGHT 0x0002
#define SS_NOPREFIX 0x0080
#define SS_SUNKEN 0x1000

#define ES_AUTOHSCROLL 0x0080

#define TBS_AUTOTICKS 0x0001
#define TBS_TOOLTIPS 0x0100

#define UDS_ARROWKEYS 0x0020

#endif

#endif
