// Numbers of the demo's own resources, menu items and controls; the resource script includes it too.
// Layer 13: demo.
#pragma once

#define IDI_DEMO 1
#define IDR_DEMO_KEYS 2
#define IDI_UNDO 3
#define IDI_REDO 4
// The example drawings, in the order of their menu items.
#define IDR_EXAMPLE_FIRST 10

// The angle dialog that the library needs from its host; number and controls are the library's.
#define IDD_HOST_ANGLE 134
#define IDC_HOST_ANGLE 1002

#define IDD_HOST_PREVIEW 135
#define IDC_PREVIEW_SHEET 1010
#define IDC_PREVIEW_SCALE 1011
#define IDC_PREVIEW_BLACK 1012
#define IDC_PREVIEW_LANDSCAPE 1013
#define IDC_PREVIEW_FACTS 1014
#define IDC_PREVIEW_PRINT 1015

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
#define ID_HOST_COPY_PICTURE 230
#define ID_HOST_PRINT_PREVIEW 231
// Snap modes: the number of the bit in the mode is the distance from the first one.
#define ID_HOST_SNAP_FIRST 210
#define ID_HOST_SNAP_LAST 213
#define ID_HOST_BACKGROUND_FIRST 220
#define ID_HOST_BACKGROUND_LAST 223
#define ID_HOST_CLASSIC 232
#define ID_HOST_SELECT_ALL 233
#define ID_HOST_RECENT_FIRST 240
#define ID_HOST_RECENT_LAST 245
#define ID_HOST_EXAMPLE_FIRST 250
// The welded section, which is drawn by its parameters.
#define ID_HOST_EXAMPLE_SECTION 253
#define ID_HOST_EXAMPLE_LAST 253
// One number for each row of the command table.
#define ID_HOST_COMMAND_FIRST 300
#define ID_HOST_COMMAND_LAST 399

#define IDC_HOST_VIEW 500
#define IDC_HOST_STATUS 501
#define IDC_HOST_TOOLBAR 502
#define IDC_HOST_SECTION 503
#define IDC_HOST_SPLIT 504
#define IDC_HOST_EXAMPLES 505

// Texts, in both languages.
#define IDS_MENU_FILE 1000
#define IDS_MENU_VIEW 1001
#define IDS_MENU_DRAW 1002
#define IDS_MENU_EDIT 1003
#define IDS_MENU_SNAP 1004
#define IDS_MENU_HELP 1005
#define IDS_MENU_EXAMPLES 1006
#define IDS_MENU_RECENT 1007
#define IDS_MENU_BACKGROUND 1008
#define IDS_TITLE 1009
#define IDS_UNTITLED 1010
#define IDS_NEW_FILE 1011
#define IDS_READY 1012
#define IDS_COLON 1013
#define IDS_ESCAPE 1014
#define IDS_DRAW_SECTION 1015
#define IDS_GRIP 1016
#define IDS_SCALE 1017
#define IDS_ORTHO 1018
#define IDS_ABOUT 1019
#define IDS_FILTER 1020
#define IDS_NOT_FOUND 1021
#define IDS_BAD_PATH 1022
#define IDS_NO_ACCESS 1023
#define IDS_IN_USE 1024
#define IDS_READ_FAILED 1025
#define IDS_CANNOT_OPEN 1026
#define IDS_EMPTY_FILE 1027
#define IDS_DAMAGED 1028
#define IDS_LOADED_SOME 1029
#define IDS_LOADED_NONE 1030
#define IDS_RECOVER 1031
#define IDS_SAVE_CHANGES 1032
#define IDS_TOO_LONG 1033
#define IDS_EMPTY_VALUE 1034
#define IDS_NOT_REAL 1035
#define IDS_NOT_NUMBER 1036
#define IDS_FAULT_SIZE 1037
#define IDS_FAULT_WELD 1038
#define IDS_FAULT_WEB 1039
#define IDS_FAULT_FLANGE 1040
#define IDS_FAULT_WELD_WIDE 1041
#define IDS_FAULT_WELD_HIGH 1042
#define IDS_RESULT 1043
#define IDS_ESCAPE_VALUE 1044
#define IDS_HINT_EDIT 1045
#define IDS_HINT_WALK 1046
#define IDS_SECTION_NAME 1047
#define IDS_SECTION_LENGTH 1048
#define IDS_SECTION_INERTIA 1049
#define IDS_SECTION_MASS 1050
#define IDS_PARM_H 1051
#define IDS_PARM_B 1052
#define IDS_PARM_TW 1053
#define IDS_PARM_TF 1054
#define IDS_PARM_S 1055
#define IDS_PARM_L 1056
#define IDS_PARM_NAME 1057
#define IDS_ROW_A 1058
#define IDS_DES_A 1059
#define IDS_ROW_IX 1060
#define IDS_DES_IX 1061
#define IDS_ROW_IY 1062
#define IDS_DES_IY 1063
#define IDS_ROW_G 1064
#define IDS_DES_G 1065
#define IDS_ROW_MASS 1066
#define IDS_DES_MASS 1067
#define IDS_CAPTION_NAME 1068
#define IDS_CAPTION_SECTION 1069
#define IDS_CAPTION_RESULTS 1070
#define IDS_PLACING 1071
#define IDS_CANNOT_COPY 1072
#define IDS_CANNOT_PASTE 1073
#define IDS_NO_PRINTER 1074
#define IDS_PRINT_FAILED 1075
#define IDS_FIT_SHEET 1076
#define IDS_SHEET_SCALE 1077
#define IDS_OFF_SHEET 1078
#define IDS_SCALE_RANGE 1079
#define IDS_EMPTY_DRAWING 1080
// The library's own messages, questions, dialogs and rows of properties: its text, then what the demo shows.
#define IDS_LIBRARY_FIRST 1081
#define IDS_LIBRARY_LAST 1133
