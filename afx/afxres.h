// Numbers of the layer's own commands, controls and string resources; read by the resource compiler too.
// Layer 1: afx.
#ifndef NR_AFXRES_H
#define NR_AFXRES_H

#ifdef RC_INVOKED
#include <winresrc.h>
#endif

#ifndef IDC_STATIC
#define IDC_STATIC (-1)
#endif

// Commands that frameworks and hosts agree on.
#define ID_FILE_NEW 0xE100
#define ID_FILE_OPEN 0xE101
#define ID_FILE_CLOSE 0xE102
#define ID_FILE_SAVE 0xE103
#define ID_FILE_SAVE_AS 0xE104
#define ID_FILE_PRINT 0xE107
#define ID_EDIT_CLEAR 0xE120
#define ID_EDIT_CLEAR_ALL 0xE121
#define ID_EDIT_COPY 0xE122
#define ID_EDIT_CUT 0xE123
#define ID_EDIT_FIND 0xE124
#define ID_EDIT_PASTE 0xE125
#define ID_EDIT_SELECT_ALL 0xE12A
#define ID_EDIT_UNDO 0xE12B
#define ID_EDIT_REDO 0xE12C
#define ID_APP_ABOUT 0xE140
#define ID_APP_EXIT 0xE141
#define ID_VIEW_TOOLBAR 0xE800
#define ID_VIEW_STATUS_BAR 0xE801
#define AFX_IDW_STATUS_BAR 0xE801

// String resources: titles of the file dialog and names in it.
#define AFX_IDS_OPENFILE 0xF000
#define AFX_IDS_SAVEFILE 0xF001
#define AFX_IDS_ALLFILTER 0xF002
#define AFX_IDS_UNTITLED 0xF003
#define AFX_IDS_SAVEFILECOPY 0xF004

// String resources: messages of the layer.
#define AFX_IDP_INVALID_FILENAME 0xF100
#define AFX_IDP_FAILED_TO_OPEN_DOC 0xF101
#define AFX_IDP_FAILED_TO_SAVE_DOC 0xF102
#define AFX_IDP_ASK_TO_SAVE 0xF103
#define AFX_IDP_FAILED_TO_CREATE_DOC 0xF104
#define AFX_IDP_FILE_TOO_LARGE 0xF105
#define AFX_IDP_INTERNAL_FAILURE 0xF108
#define AFX_IDP_COMMAND_FAILURE 0xF109
#define AFX_IDP_PARSE_INT 0xF110
#define AFX_IDP_PARSE_REAL 0xF111
#define AFX_IDP_PARSE_INT_RANGE 0xF112
#define AFX_IDP_PARSE_REAL_RANGE 0xF113
#define AFX_IDP_PARSE_STRING_SIZE 0xF114
#define AFX_IDP_PARSE_RADIO_BUTTON 0xF115
#define AFX_IDP_PARSE_BYTE 0xF116
#define AFX_IDP_PARSE_UINT 0xF117
#define AFX_IDP_FAILED_INVALID_FORMAT 0xF120
#define AFX_IDP_FAILED_INVALID_PATH 0xF121
#define AFX_IDP_FAILED_DISK_FULL 0xF122
#define AFX_IDP_FAILED_ACCESS_READ 0xF123
#define AFX_IDP_FAILED_ACCESS_WRITE 0xF124
#define AFX_IDP_FAILED_IO_ERROR_READ 0xF125
#define AFX_IDP_FAILED_IO_ERROR_WRITE 0xF126

// String resources: the texts of exceptions. Those of files and archives are numbered by cause.
#define AFX_IDS_ARCHIVE_CAUSE 0xF140
#define AFX_IDS_FILE_CAUSE 0xF150
#define AFX_IDS_OUT_OF_MEMORY 0xF160
#define AFX_IDS_NOT_SUPPORTED 0xF161
#define AFX_IDS_NO_RESOURCE 0xF162
#define AFX_IDS_INVALID_ARGUMENT 0xF163
#define AFX_IDS_UNKNOWN_ERROR 0xF164
#define AFX_IDS_UNNAMED_FILE 0xF165
#define AFX_IDS_NAME_AND_CAUSE 0xF166

#endif
