// Numbers of the library's resources and of their controls and menu items. The script in resources/ includes it too,
// so it holds plain definitions only.
// Layer 3: base.
#pragma once

// Cursors, loaded by their number. IDC_CURSOR_OPERATION is the default of every command and of the idle view.
#define IDC_CURSOR_OPERATION 131
#define IDC_CURSOR_PAN 1479
#define IDC_CURSOR_ADD_POINT 7001
#define IDC_CURSOR_REMOVE_POINT 7002
// The other cursors of the module; no code loads them, hosts may.
#define IDC_CURSOR_CROSS 142
#define IDC_CURSOR_ZOOM 1014
#define IDC_CURSOR_ZOOM_IN 1016
#define IDC_CURSOR_ZOOM_OUT 1017
#define IDC_CURSOR_PAN_GRAB 1478
#define IDC_CURSOR_MOVE 1480

// Icons, 16 by 16, one for each family of commands.
#define IDI_LINE 301
#define IDI_PLINE 302
#define IDI_RECT 303
#define IDI_CIRCLE 304
#define IDI_ARC 305
#define IDI_TEXT 306
#define IDI_TEXTPARM 307
#define IDI_LABEL 308
#define IDI_ROTATION 309
#define IDI_TRANSLATION 310
#define IDI_MIRRORING 311
#define IDI_COPY 312
#define IDI_ERASE 313
#define IDI_OFFSET 314
#define IDI_VIEWMOVE 315
#define IDI_ZOOMALL 316

// Property dialog; its grid is a control of the class "CGridCtrl" in the library kx.
#define IDD_DRAWABLE_PROPERTY 131
#define IDC_PROPERTY_GRID 1000

// Text editor dialog.
#define IDD_TEXT_EDIT 132
#define IDC_TEXT_CONTENT 1006

// Angle dialog. The library has no such template: a host that wants the command supplies one with this edit box.
#define IDD_SET_ANGLE 134
#define IDC_ANGLE 1002

// Popup menus and their items. No code uses the confirmation menu.
#define IDR_CONFIRM_MENU 130
#define ID_CONFIRM_OK 32777
#define ID_CONFIRM_CANCEL 32778
#define ID_CONFIRM_CLOSE 32779
#define IDR_VIEW_MENU 132 // The parameter view's menu.
#define ID_VIEW_ZOOM_ALL 32790
#define ID_VIEW_MOVE 32791
