// Numbers of the demo's own resources, menu items and controls; the resource script includes it too.
// Layer 11: demo.
#pragma once

#define IDI_DEMO 1
#define IDR_DEMO_KEYS 2
// The example drawings, in the order of their menu items.
#define IDR_EXAMPLE_FIRST 10

// The angle dialog that the library needs from its host; number and controls are the library's.
#define IDD_HOST_ANGLE 134
#define IDC_HOST_ANGLE 1002

#define ID_HOST_ZOOM_ALL 200
#define ID_HOST_ORTHO 201
#define ID_HOST_BREAK_OFF 202
#define ID_HOST_DESELECT 203
#define ID_HOST_ERASE 204
#define ID_HOST_ABOUT 205
#define ID_HOST_NEXT_PANE 206
#define ID_HOST_SHOW_SECTION 207
#define ID_HOST_DRAW_SECTION 208
#define ID_HOST_PROPERTIES 209
// Snap modes: the number of the bit in the mode is the distance from the first one.
#define ID_HOST_SNAP_FIRST 210
#define ID_HOST_SNAP_LAST 213
#define ID_HOST_BACKGROUND_FIRST 220
#define ID_HOST_BACKGROUND_LAST 223
#define ID_HOST_CLASSIC 230
#define ID_HOST_SELECT_ALL 231
#define ID_HOST_RECENT_FIRST 240
#define ID_HOST_RECENT_LAST 245
#define ID_HOST_EXAMPLE_FIRST 250
#define ID_HOST_EXAMPLE_LAST 252
// One number for each row of the command table.
#define ID_HOST_COMMAND_FIRST 300
#define ID_HOST_COMMAND_LAST 399

#define IDC_HOST_VIEW 500
#define IDC_HOST_STATUS 501
#define IDC_HOST_TOOLBAR 502
#define IDC_HOST_SECTION 503
#define IDC_HOST_SPLIT 504
