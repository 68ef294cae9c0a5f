/* The C interface of NRVectorView: an embeddable two-dimensional drawing view for Windows.
 * This is the only header that a host in C or in another language needs.
 *
 * Handles. Most functions take an NrvHandle: the HWND of a window of one of the two classes below, or a drawing without
 * a window made by NrvCreateDrawing. A window is made by CreateWindowEx, or named in a dialog template, after
 * NrvInitialize; it ends by DestroyWindow or with its parent.
 *
 * Threads. A window's functions are called on the thread that made the window; any other thread gets NRV_E_THREAD. A
 * drawing may be used on any thread, by one at a time: a call while another thread is in one gets NRV_E_BUSY.
 *
 * Errors. Each function but NrvGetVersion returns NRV_OK (0) or a positive number of enum NrvError. A call that fails
 * changes nothing unless its comment tells otherwise, and never writes through a pointer that was not checked. Null is
 * allowed for a pointer only where the comment says "may be null". No C++ exception leaves a function.
 *
 * Strings are UTF-16, ended by a zero. A string or an array that a function gives is written into memory of the caller
 * by three arguments: the buffer, its capacity (in characters with the final zero, or in elements) and the length. The
 * length is always told, without the final zero. A null buffer with capacity 0 only asks for it. When the buffer is too
 * small the result is NRV_E_BUFFER, and nothing is written but an empty string. No memory changes its owner.
 *
 * Records begin with `size`, which the caller sets to sizeof the record before each call. A later version appends
 * fields at the end only: it accepts the sizes of all earlier versions, and writes no more than the caller's size.
 *
 * Units. Drawing units are the host's own, with y upwards. Pixels are those of the window's client area, with y
 * downwards. Angles of arcs are radians, anticlockwise from the positive x axis; angles of texts are degrees. Colours
 * are 0x00RRGGBB. The highest byte of a colour is ignored. Numbers must be finite.
 *
 * Events. The parent window is told by WM_NOTIFY, whose lParam is an NrvEvent, and so is an optional callback. When an
 * event comes, everything of its source is settled: any function may be called for it, also one that ends it.
 *
 * What stays: within one major version no function, constant or field changes its name, number, meaning or place; new
 * ones are appended. Numbers that a version does not know, such as codes of events, are to be ignored by a host. */
#ifndef NRVIEW_H
#define NRVIEW_H

#include <stdint.h>
#include <wchar.h>

/* The version of this header; NrvGetVersion tells that of the DLL. */
#define NRV_VERSION_MAJOR 1 /* Another one: a host has to be looked through. */
#define NRV_VERSION_MINOR 0 /* A higher one has more functions, constants or fields. */
#define NRV_VERSION_PATCH 0 /* A higher one has mended defects. */

/* The export mark and the calling convention of every function. */
#ifdef NRVECTORVIEW_BUILD
#define NRV_API __declspec(dllexport)
#else
#define NRV_API __declspec(dllimport) /* Taken from the DLL. */
#endif
#define NRV_CALL __cdecl /* The convention of C, also for callbacks. */

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Types ------------------------------------------------------------------------------------------------------ */

typedef wchar_t NrvChar;   /* 16 bits: one unit of UTF-16. */
typedef void* NrvHandle;   /* The HWND of a view, or a drawing. */
typedef uint64_t NrvId;    /* An object of a drawing. 0 is none. Never used twice in a process. */
typedef int32_t NrvResult; /* Of enum NrvError. */

/* The names of the window classes, for CreateWindowEx and dialog templates. */
#define NRV_VIEW_CLASS L"NRVectorView"          /* A drawing that is shown and edited by commands. */
#define NRV_PARM_VIEW_CLASS L"NRVectorParmView" /* A diagram of parameters, edited by a click on them. */

/* A colour of three parts from 0 to 255. */
#define NRV_RGB(r, g, b) (((uint32_t)(r) << 16) | ((uint32_t)(g) << 8) | (uint32_t)(b))

/* What functions return. */
enum NrvError {
    NRV_OK = 0,         /* Done. */
    NRV_E_ARGUMENT = 1, /* A null pointer, a number that is out of range or not finite, an unknown constant. */
    NRV_E_HANDLE = 2,   /* Neither a window of the two classes nor a drawing, or one that has ended. */
    NRV_E_THREAD = 3,   /* The window belongs to another thread. */
    NRV_E_BUSY = 4,     /* Another thread is in a call for this drawing. */
    NRV_E_OBJECT = 5,   /* The id names no object of this drawing: never, no longer, or one of another drawing. */
    NRV_E_KIND = 6,     /* Objects, or handles, of this kind do not have what was asked for. */
    NRV_E_BUFFER = 7,   /* The buffer is too small; the needed length was told. */
    NRV_E_RECORD = 8,   /* The `size` of a record is smaller than that of the first version. */
    NRV_E_MEMORY = 9,   /* Not enough memory. */
    NRV_E_PARTLY = 10,  /* A load that lost a part of the drawing; the rest is there. */
    NRV_E_REFUSED = 11, /* A load that read nothing, or an edit whose text was refused. */
    NRV_E_FILE = 12,    /* The file can't be read or written; NrvGetLastMessage may tell more. */
    NRV_E_STATE = 13,   /* Not now: no edit is open, no command waits for a distance. */
    NRV_E_WORD = 14,    /* No command has this word, no parameter this name. */
    NRV_E_PAINT = 15,   /* The drawing could not be painted; see NrvGetLastMessage. */
    NRV_E_ENDED = 16,   /* The view or drawing was ended by an event handler of the host during the call. */
    NRV_E_SYSTEM = 17   /* Windows refused something, or a failure of another kind. */
};

/* Kinds of handles. */
enum NrvHandleKind { NRV_HANDLE_VIEW = 1, NRV_HANDLE_PARM_VIEW = 2, NRV_HANDLE_DRAWING = 3 };

/* Kinds of objects. */
enum NrvKind {
    NRV_KIND_NONE = 0,
    NRV_KIND_LINE = 1,
    NRV_KIND_CIRCLE = 2,
    NRV_KIND_ARC = 3,
    NRV_KIND_POLYLINE = 4,
    NRV_KIND_PARM = 5, /* A text that shows a named parameter of the host. */
    NRV_KIND_TEXT = 6,
    NRV_KIND_CENTER_POINT = 7,
    NRV_KIND_LABEL = 8, /* A dimension. */
    NRV_KIND_FRAME = 9, /* A rectangle with an identifier, which marks a group; it is never hit and has no extent. */
    NRV_KIND_OTHER = 100
};

/* A point of the drawing. */
typedef struct NrvPoint {
    double x; /* Drawing units. */
    double y; /* Drawing units, upwards. */
} NrvPoint;

/* An upright rectangle of the drawing. */
typedef struct NrvRect {
    double left;   /* Drawing units: the smallest x. */
    double bottom; /* The smallest y. */
    double right;  /* The largest x. */
    double top;    /* The largest y. */
} NrvRect;

/* ---- The library ------------------------------------------------------------------------------------------------ */

/* Major * 0x1000000 + minor * 0x10000 + patch * 0x100. May be called before everything else, on any thread. */
NRV_API uint32_t NRV_CALL NrvGetVersion(void);

/* Registers the two window classes for the whole process. Any other function does it too; a program that begins with
 * CreateWindowEx or a dialog calls this one first. May be called more than once, on any thread. */
NRV_API NrvResult NRV_CALL NrvInitialize(void);

/* A sentence in English about an error number. NRV_E_ARGUMENT for an unknown number. */
NRV_API NrvResult NRV_CALL NrvErrorText(NrvResult error, NrvChar* buffer, uint32_t capacity, uint32_t* length);

/* Of enum NrvHandleKind. On any thread. */
NRV_API NrvResult NRV_CALL NrvGetHandleKind(NrvHandle handle, int32_t* kind);

/* A new, empty drawing without a window. NrvFreeDrawing ends it. Its messages are never shown in a box. */
NRV_API NrvResult NRV_CALL NrvCreateDrawing(NrvHandle* drawing);
/* NRV_E_KIND for a window: that one ends by DestroyWindow. */
NRV_API NrvResult NRV_CALL NrvFreeDrawing(NrvHandle drawing);

/* ---- Loading and saving ----------------------------------------------------------------------------------------- */

/* How a load went. */
enum NrvOutcome {
    NRV_LOAD_WHOLE = 0,  /* All of the stream was read. */
    NRV_LOAD_PARTLY = 1, /* The stream is damaged or cut off; the objects before the damage are there. */
    NRV_LOAD_REFUSED = 2 /* Nothing could be read; the drawing is empty. */
};

/* What a load found. */
typedef struct NrvLoad {
    uint32_t size;    /* Of this record, in bytes. */
    int32_t outcome;  /* Of enum NrvOutcome. */
    uint32_t objects; /* In the drawing after the load. */
} NrvLoad;

/* Replaces the drawing by a stream in memory, which is only read. NRV_OK when all of it was read, NRV_E_PARTLY,
 * or NRV_E_REFUSED; in these three cases the old drawing has been freed, its ids are stale, and `load` (may be null) is
 * filled in. No message box is shown: NrvGetLastMessage has the text. Scale and origin are those of the stream. */
NRV_API NrvResult NRV_CALL NrvLoadBuffer(NrvHandle handle, const void* data, uint32_t size, NrvLoad* load);
/* The same from a file. NRV_E_FILE, with the old drawing unchanged, when it can't be read or is empty. */
NRV_API NrvResult NRV_CALL NrvLoadFile(NrvHandle handle, const NrvChar* path, NrvLoad* load);
/* The stream into the caller's buffer; capacity and size in bytes. The background net is no part of it. */
NRV_API NrvResult NRV_CALL NrvSaveBuffer(NrvHandle handle, void* buffer, uint32_t capacity, uint32_t* size);
/* The stream into a file. An existing file is replaced only by a complete one. */
NRV_API NrvResult NRV_CALL NrvSaveFile(NrvHandle handle, const NrvChar* path);
/* Frees all objects of the drawing; net, layers, background and mapping stay. Cancels an open edit, and a running
 * command that works on them. */
NRV_API NrvResult NRV_CALL NrvClear(NrvHandle handle);
/* Whether something was changed since the last load or save. Every command of NrvDoCommand counts as a change, unless
 * the editing option modified_by_change is set. */
NRV_API NrvResult NRV_CALL NrvGetModified(NrvHandle handle, int32_t* modified);
NRV_API NrvResult NRV_CALL NrvSetModified(NrvHandle handle, int32_t modified);

/* ---- Adding objects --------------------------------------------------------------------------------------------- */
/* Each function makes one object in the given colour on top of the drawing and gives its id (`id` may be null). All
 * other attributes have defaults and are set afterwards. Coordinates and lengths are drawing units. */

NRV_API NrvResult NRV_CALL NrvAddLine(NrvHandle handle, double x1, double y1, double x2, double y2, uint32_t color,
                                      NrvId* id);
/* A line of the background net, which lies under the drawing and is not saved, measured or hit. */
NRV_API NrvResult NRV_CALL NrvAddNetLine(NrvHandle handle, double x1, double y1, double x2, double y2, uint32_t color,
                                         NrvId* id);
NRV_API NrvResult NRV_CALL NrvAddCircle(NrvHandle handle, double x, double y, double radius, uint32_t color, NrvId* id);
/* Anticlockwise from `start` to `end`, in radians. Radius and angles are kept in single precision. */
NRV_API NrvResult NRV_CALL NrvAddArc(NrvHandle handle, double x, double y, double radius, double start, double end,
                                     uint32_t color, NrvId* id);
/* From the first point through the second one to the third. NRV_E_ARGUMENT when they lie on a line. */
NRV_API NrvResult NRV_CALL NrvAddArc3(NrvHandle handle, double x1, double y1, double x2, double y2, double x3,
                                      double y3, uint32_t color, NrvId* id);
/* A mark: a cross with a circle. */
NRV_API NrvResult NRV_CALL NrvAddCenterPoint(NrvHandle handle, double x, double y, uint32_t color, NrvId* id);
/* `count` vertices, at least one. `bulges` (may be null: all straight) has one number for each vertex, for the segment
 * that begins there: the height of the arc divided by half its chord, positive with the arc on the right of it. */
NRV_API NrvResult NRV_CALL NrvAddPolyline(NrvHandle handle, const NrvPoint* points, const double* bulges,
                                          uint32_t count, int32_t closed, uint32_t color, NrvId* id);
/* (x, y) is the upper left corner of the text. `angle` in degrees, `height` in drawing units; 0: the default of 20. */
NRV_API NrvResult NRV_CALL NrvAddText(NrvHandle handle, double x, double y, const NrvChar* text, double angle,
                                      double height, uint32_t color, NrvId* id);
/* A parameter: its value and its name. `height` 0: measured in pixels on the screen. The library stores the
 * expression NRV_STRING_EXPRESSION, that of an unsigned number, and does not apply it: NRV_N_EDIT_ACCEPT decides. */
NRV_API NrvResult NRV_CALL NrvAddParm(NrvHandle handle, double x, double y, const NrvChar* value, const NrvChar* name,
                                      double height, uint32_t color, NrvId* id);
/* A dimension of the length between two points, with its line through the ends of the two extension lines. `points`
 * are four: start and end of the left extension line, start and end of the right one. */
NRV_API NrvResult NRV_CALL NrvAddLabel(NrvHandle handle, const NrvPoint* points, uint32_t color, NrvId* id);
NRV_API NrvResult NRV_CALL NrvAddFrame(NrvHandle handle, double x1, double y1, double x2, double y2,
                                       const NrvChar* identifier, uint32_t color, NrvId* id);

/* ---- Objects ---------------------------------------------------------------------------------------------------- */

/* The lists of objects that a drawing has. */
enum NrvList {
    NRV_LIST_DRAWING = 0, /* In drawing order: the last one lies on top. */
    NRV_LIST_NET = 1,     /* The background net. */
    NRV_LIST_SELECTED = 2 /* In the order of selection. */
};

/* The ids of all objects of a list of enum NrvList. */
NRV_API NrvResult NRV_CALL NrvGetObjects(NrvHandle handle, int32_t list, NrvId* ids, uint32_t capacity,
                                         uint32_t* count);
/* The object at an index of a list. NRV_E_ARGUMENT beyond its end. */
NRV_API NrvResult NRV_CALL NrvGetObject(NrvHandle handle, int32_t list, uint32_t index, NrvId* id);
/* Of enum NrvKind. */
NRV_API NrvResult NRV_CALL NrvGetKind(NrvHandle handle, NrvId id, int32_t* kind);
/* The word for the kind that is shown to a user, in Chinese. */
NRV_API NrvResult NRV_CALL NrvGetKindName(NrvHandle handle, NrvId id, NrvChar* buffer, uint32_t capacity,
                                          uint32_t* length);
/* Takes the object out of the drawing, or out of the net, and frees it. */
NRV_API NrvResult NRV_CALL NrvRemove(NrvHandle handle, NrvId id);
/* The place in the drawing order, from 0 at the bottom; beyond the end means on top. NRV_E_KIND for the net. */
NRV_API NrvResult NRV_CALL NrvGetOrder(NrvHandle handle, NrvId id, uint32_t* index);
NRV_API NrvResult NRV_CALL NrvSetOrder(NrvHandle handle, NrvId id, uint32_t index);

/* The points of an object: line: its ends; polyline: its vertices; circle, arc, centre point: the centre; text and
 * parameter: the upper left corner; label: start and end of the left extension line, then of the right one; frame: two
 * opposite corners. Setting needs as many as there are; a polyline takes any number from one upwards, and new
 * segments are straight. */
NRV_API NrvResult NRV_CALL NrvGetPoints(NrvHandle handle, NrvId id, NrvPoint* points, uint32_t capacity,
                                        uint32_t* count);
NRV_API NrvResult NRV_CALL NrvSetPoints(NrvHandle handle, NrvId id, const NrvPoint* points, uint32_t count);
/* Polylines only: one number for each vertex. */
NRV_API NrvResult NRV_CALL NrvGetBulges(NrvHandle handle, NrvId id, double* bulges, uint32_t capacity, uint32_t* count);
NRV_API NrvResult NRV_CALL NrvSetBulges(NrvHandle handle, NrvId id, const double* bulges, uint32_t count);

/* Whole numbers of objects. */
enum NrvInt {
    NRV_INT_COLOR = 1,        /* 0x00RRGGBB. Reading resolves an index of the table. Setting makes it explicit. */
    NRV_INT_COLOR_INDEX = 2,  /* -2 explicit, -1 by layer, else an entry of the colour table, 0 to 140. */
    NRV_INT_LINE_TYPE = 3,    /* A GDI pen style, 0 to 4; -1 by layer. */
    NRV_INT_LAYER = 4,        /* From 0; a layer that does not exist is allowed and has no effect. */
    NRV_INT_VISIBLE = 5,      /* 0 or 1. */
    NRV_INT_SELECTABLE = 6,   /* 0 or 1. */
    NRV_INT_SELECTED = 7,     /* 0 or 1; not for the net. */
    NRV_INT_WIDTH_LOCKED = 8, /* 1: the line width is in pixels at every zoom. Not for texts and frames. */
    NRV_INT_CLOSED = 9,       /* Polylines: 0 or 1. */
    NRV_INT_FILLED = 10,      /* Circles: 0 or 1. */
    NRV_INT_PARM_TYPE = 11,   /* Parameters: 4 is never edited; the others have the meaning that the host gives. */
    NRV_INT_PARM_BOX = 12,    /* Parameters: 1: a click opens the edit box; 0: it is only reported. */
    NRV_INT_FIGURE = 13,      /* Labels: 1: the measured length is shown. */
    NRV_INT_GAP = 14,         /* Labels: 1: the dimension line has a gap. */
    /* 1: drawn by inversion, as a preview is; the sides of a rectangle that a command drew are, unless the editing
     * option clean_rectangle is set. 0 for a selected object. Setting 1 takes it out of the selection. */
    NRV_INT_INVERTED = 15,
    NRV_INT_BRUSH = 16,       /* For the host: stored, not used. */
    NRV_INT_TEXT_COLOR = 17,  /* Texts and parameters: 0x00RRGGBB behind the characters, not stored. */
    NRV_INT_TEXT_OPAQUE = 18, /* Texts and parameters: 1: NRV_INT_TEXT_COLOR is painted. Not stored. */
    NRV_INT_NUMBER = 19       /* A number that is stored with the object and only read: setting gives NRV_E_KIND. */
};

/* Numbers of objects, in drawing units where nothing else is told. All but radius, angles and label sizes are kept in
 * single precision. */
enum NrvDouble {
    NRV_DOUBLE_LINE_WIDTH = 1,  /* Pixels when the width is locked; -1 by layer. */
    NRV_DOUBLE_RADIUS = 2,      /* Circles and arcs. */
    NRV_DOUBLE_START_ANGLE = 3, /* Arcs: radians. */
    NRV_DOUBLE_END_ANGLE = 4,
    NRV_DOUBLE_TEXT_HEIGHT = 5, /* Texts and parameters. */
    NRV_DOUBLE_TEXT_WIDTH = 6,  /* Of the box of a text; of the edit box of a parameter. */
    NRV_DOUBLE_TEXT_ANGLE = 7,  /* Degrees. */
    NRV_DOUBLE_TEXT_RATIO = 8,  /* Width of the characters by half their height; 0 leaves it to the font. */
    NRV_DOUBLE_TICK_SIZE = 9,   /* Labels. */
    NRV_DOUBLE_TICK_WIDTH = 10, /* Labels. */
    NRV_DOUBLE_GAP = 11,        /* Labels: half the gap in the dimension line. */
    NRV_DOUBLE_SCALE = 12,      /* For the host: stored, not used. */
    NRV_DOUBLE_TEXT_OFFSET = 13 /* Texts and parameters. For the host: stored, not used. */
};

/* Strings of objects. */
enum NrvString {
    NRV_STRING_TEXT = 1,        /* Texts: the text; parameters: the value. */
    NRV_STRING_NAME = 2,        /* The parameter's name; of lines and curves a tag of the host. Frame: identifier. */
    NRV_STRING_MESSAGE = 3,     /* A tag of the host: stored, never interpreted. Not for plain texts and frames. */
    NRV_STRING_DESCRIPTION = 4, /* Parameters: shown as a tooltip. */
    NRV_STRING_EXPRESSION = 5,  /* Parameters: what a host's check may use. */
    NRV_STRING_LINK = 6         /* Parameters: for the host. */
};

/* NRV_E_KIND where the object's kind has no such number or string. */
NRV_API NrvResult NRV_CALL NrvGetInt(NrvHandle handle, NrvId id, int32_t what, int32_t* value);
NRV_API NrvResult NRV_CALL NrvSetInt(NrvHandle handle, NrvId id, int32_t what, int32_t value);
NRV_API NrvResult NRV_CALL NrvGetDouble(NrvHandle handle, NrvId id, int32_t what, double* value);
NRV_API NrvResult NRV_CALL NrvSetDouble(NrvHandle handle, NrvId id, int32_t what, double value);
NRV_API NrvResult NRV_CALL NrvGetString(NrvHandle handle, NrvId id, int32_t what, NrvChar* buffer, uint32_t capacity,
                                        uint32_t* length);
NRV_API NrvResult NRV_CALL NrvSetString(NrvHandle handle, NrvId id, int32_t what, const NrvChar* value);

/* The tags of one segment of a polyline: `what` is NRV_STRING_NAME or NRV_STRING_MESSAGE. */
NRV_API NrvResult NRV_CALL NrvGetSegmentString(NrvHandle handle, NrvId id, uint32_t segment, int32_t what,
                                               NrvChar* buffer, uint32_t capacity, uint32_t* length);
NRV_API NrvResult NRV_CALL NrvSetSegmentString(NrvHandle handle, NrvId id, uint32_t segment, int32_t what,
                                               const NrvChar* value);

/* Polylines: a vertex more, before the one at `index` or at the end, with the bulge of the segment that it divides; one
 * less; a colour of its own, 0x00RRGGBB, for the segment that begins at a vertex, which is not stored (with `own` 0 it
 * is drawn in the polyline's again); and further snap points, exactly these, insert points of the snap mode, which are
 * neither stored nor transformed (with count 0, `points` may be null, none). */
NRV_API NrvResult NRV_CALL NrvInsertVertex(NrvHandle handle, NrvId id, uint32_t index, double x, double y);
NRV_API NrvResult NRV_CALL NrvRemoveVertex(NrvHandle handle, NrvId id, uint32_t index);
NRV_API NrvResult NRV_CALL NrvSetSegmentColor(NrvHandle handle, NrvId id, uint32_t segment, int32_t own,
                                              uint32_t color);
NRV_API NrvResult NRV_CALL NrvSetSnapPoints(NrvHandle handle, NrvId id, const NrvPoint* points, uint32_t count);

/* The distance of a point from an object, in drawing units, as hits measure it; 100 or more for what can't be hit,
 * and not-a-number for a line without a length. */
NRV_API NrvResult NRV_CALL NrvGetDistance(NrvHandle handle, NrvId id, double x, double y, double* distance);
/* The feet of the perpendiculars from a point on the infinite lines of lines and of straight segments. */
NRV_API NrvResult NRV_CALL NrvGetFeet(NrvHandle handle, NrvId id, double x, double y, NrvPoint* points,
                                      uint32_t capacity, uint32_t* count);

/* The extent of an object, or with id 0 of the drawing. NRV_E_STATE when there is none. */
NRV_API NrvResult NRV_CALL NrvGetExtents(NrvHandle handle, NrvId id, NrvRect* extents);
/* Transforms an object, or with id 0 all of the drawing: x' = m[0] x + m[1] y + m[2], y' = m[3] x + m[4] y + m[5].
 * Circles and texts only move, frames do not; the bulges of a polyline stay. */
NRV_API NrvResult NRV_CALL NrvTransform(NrvHandle handle, NrvId id, const double* matrix);
/* The grips that a selected object shows. */
NRV_API NrvResult NRV_CALL NrvGetGrips(NrvHandle handle, NrvId id, NrvPoint* points, uint32_t capacity,
                                       uint32_t* count);
NRV_API NrvResult NRV_CALL NrvMoveGrip(NrvHandle handle, NrvId id, uint32_t grip, double dx, double dy);

/* ---- Parameters ------------------------------------------------------------------------------------------------- */

/* The number of parameters, and the one at an index, in drawing order. */
NRV_API NrvResult NRV_CALL NrvGetParmCount(NrvHandle handle, uint32_t* count);
NRV_API NrvResult NRV_CALL NrvGetParm(NrvHandle handle, uint32_t index, NrvId* id);
/* The first parameter of that name, compared with case. NRV_E_WORD when there is none. */
NRV_API NrvResult NRV_CALL NrvFindParm(NrvHandle handle, const NrvChar* name, NrvId* id);
/* The value of the first parameter of that name. */
NRV_API NrvResult NRV_CALL NrvGetParmValue(NrvHandle handle, const NrvChar* name, NrvChar* buffer, uint32_t capacity,
                                           uint32_t* length);
NRV_API NrvResult NRV_CALL NrvSetParmValue(NrvHandle handle, const NrvChar* name, const NrvChar* value);
/* The text that is drawn for a parameter under the number display of the drawing. */
NRV_API NrvResult NRV_CALL NrvGetShownText(NrvHandle handle, NrvId id, NrvChar* buffer, uint32_t capacity,
                                           uint32_t* length);

/* ---- Property rows ---------------------------------------------------------------------------------------------- */
/* What a property window shows of an object: rows of a key, a label, a description, a type and a value. */

/* The texts of a row. */
enum NrvRow { NRV_ROW_KEY = 1, NRV_ROW_LABEL = 2, NRV_ROW_DESCRIPTION = 3, NRV_ROW_VALUE = 4 };

/* How many rows the object has. */
NRV_API NrvResult NRV_CALL NrvGetRowCount(NrvHandle handle, NrvId id, uint32_t* count);
/* `type` is a VARTYPE: VT_I2 2, VT_I4 3, VT_R4 4, VT_R8 5, VT_BSTR 8, VT_BOOL 11. */
NRV_API NrvResult NRV_CALL NrvGetRowType(NrvHandle handle, NrvId id, uint32_t row, int32_t* type);
/* `what` of enum NrvRow; the value as text. */
NRV_API NrvResult NRV_CALL NrvGetRow(NrvHandle handle, NrvId id, uint32_t row, int32_t what, NrvChar* buffer,
                                     uint32_t capacity, uint32_t* length);
/* NRV_E_ARGUMENT for a text that is no value of the row's type. */
NRV_API NrvResult NRV_CALL NrvSetRow(NrvHandle handle, NrvId id, uint32_t row, const NrvChar* value);

/* ---- Layers ----------------------------------------------------------------------------------------------------- */
/* A drawing begins with one layer, "Layer 0". Layers are not part of the stream. */

/* What objects take from their layer where they have no values of their own. */
typedef struct NrvLayer {
    uint32_t size;       /* Of this record, in bytes. */
    int32_t color_index; /* -2: `color`; else an entry of the colour table. */
    uint32_t color;      /* 0x00RRGGBB. */
    int32_t line_type;   /* A GDI pen style. */
    double line_width;   /* As NRV_DOUBLE_LINE_WIDTH. Kept in single precision. */
    int32_t state;       /* Kept for the host; the library does not use it. */
    int32_t reserved;    /* 0. */
    NrvChar name[24];    /* At most 20 bytes in the code page GBK: 20 Latin letters, 10 Chinese characters. */
} NrvLayer;

/* The number of layers. */
NRV_API NrvResult NRV_CALL NrvGetLayerCount(NrvHandle handle, uint32_t* count);
/* At most 101 layers: NRV_E_STATE beyond. `index` may be null. */
NRV_API NrvResult NRV_CALL NrvAddLayer(NrvHandle handle, const NrvChar* name, uint32_t* index);
NRV_API NrvResult NRV_CALL NrvGetLayer(NrvHandle handle, uint32_t index, NrvLayer* layer);
NRV_API NrvResult NRV_CALL NrvSetLayer(NrvHandle handle, uint32_t index, const NrvLayer* layer);
/* All of them, also the first one. Objects keep their numbers of layers. */
NRV_API NrvResult NRV_CALL NrvRemoveLayers(NrvHandle handle);

/* ---- Selection -------------------------------------------------------------------------------------------------- */
/* See also NRV_LIST_SELECTED and NRV_INT_SELECTED. */

/* Exactly these objects of the drawing; with count 0 (`ids` may be null) none. */
NRV_API NrvResult NRV_CALL NrvSetSelection(NrvHandle handle, const NrvId* ids, uint32_t count);

/* ---- Undo and redo ----------------------------------------------------------------------------------------------- */

/* 1 while steps are recorded; off at first. Switching it on or off forgets all steps. NRV_E_MEMORY when there is no
 * memory for it. All other functions here give NRV_E_STATE while it is off. */
NRV_API NrvResult NRV_CALL NrvGetHistory(NrvHandle handle, int32_t* on);
NRV_API NrvResult NRV_CALL NrvSetHistory(NrvHandle handle, int32_t on);
/* Undoes the last step, or repeats the last one that was undone. A running command and an open edit are
 * ended first. NRV_E_STATE when there is no step, and within an event of an edit. A restored object has its old id. */
NRV_API NrvResult NRV_CALL NrvUndo(NrvHandle handle);
NRV_API NrvResult NRV_CALL NrvRedo(NrvHandle handle);
/* The number of steps that can be undone, or with `redo` 1 repeated. */
NRV_API NrvResult NRV_CALL NrvGetStepCount(NrvHandle handle, int32_t redo, uint32_t* count);
/* The name of the step that NrvUndo, or with `redo` 1 NrvRedo, would undo or repeat, for a menu: in Chinese, or with
 * `english` 1 in English. Empty when there is no step. */
NRV_API NrvResult NRV_CALL NrvGetStepName(NrvHandle handle, int32_t redo, int32_t english, NrvChar* buffer,
                                          uint32_t capacity, uint32_t* length);
/* What is changed between the two calls is one step. Without them each call that changes something is a step, and while
 * a command runs a part of the command's; commands and edits of the user are steps in any case. Null names: a general
 * name. The calls may be nested: the outermost ones count. Within them there is no undo: NRV_E_STATE. A step of removed
 * objects, or of a change that is no object's, takes time proportional to the drawing: group many such calls. */
NRV_API NrvResult NRV_CALL NrvBeginStep(NrvHandle handle, const NrvChar* chinese, const NrvChar* english);
NRV_API NrvResult NRV_CALL NrvEndStep(NrvHandle handle);

/* Beyond either limit the oldest steps are forgotten; the newest one is kept whatever its size. At first 64 MB and
 * 1,000 steps. NRV_E_ARGUMENT for no step. */
NRV_API NrvResult NRV_CALL NrvSetStepLimits(NrvHandle handle, uint64_t bytes, uint32_t steps);

/* ---- Commands: windows only -------------------------------------------------------------------------------------- */

/* What there is to know of a command, for menus. */
enum NrvCommandField {
    NRV_COMMAND_WORD = 1,
    NRV_COMMAND_CAPTION = 2, /* For a menu, with its mnemonic and, after a tab, its key. */
    NRV_COMMAND_HINT = 3,    /* What the user does while it runs. */
    NRV_COMMAND_CHINESE = 4, /* What it does, as its step is called. */
    NRV_COMMAND_ENGLISH = 5
};
/* The number of commands. */
NRV_API NrvResult NRV_CALL NrvGetCommandCount(uint32_t* count);
/* One text of a command, named by enum NrvCommandField. `index` from 0; NRV_E_ARGUMENT beyond the last one. */
NRV_API NrvResult NRV_CALL NrvGetCommand(uint32_t index, int32_t field, NrvChar* buffer, uint32_t capacity,
                                         uint32_t* length);
/* Starts a command by its word, with case; "open" and "save" show the file dialog. A running one is cancelled.
 * NRV_E_WORD for an unknown word, which changes nothing. Commands that ask a question ask it in a box, unless the host
 * answers NRV_N_MESSAGE. The view takes the keyboard focus. */
NRV_API NrvResult NRV_CALL NrvDoCommand(NrvHandle handle, const NrvChar* word);
/* The word of the running command; "grip" while a grip is moved, empty when none runs. */
NRV_API NrvResult NRV_CALL NrvGetRunningCommand(NrvHandle handle, NrvChar* buffer, uint32_t capacity, uint32_t* length);
/* Cancels the running command; objects that it has moved are put back. NRV_OK also when none runs. */
NRV_API NrvResult NRV_CALL NrvCancelCommand(NrvHandle handle);
/* What typing a whole number of drawing units and Return does. NRV_E_STATE when no command waits for a distance. */
NRV_API NrvResult NRV_CALL NrvEnterDistance(NrvHandle handle, int32_t distance);
/* Bits: 1 vertices, 2 insert points, 4 midpoints, 8 feet of perpendiculars. 15 at first. */
NRV_API NrvResult NRV_CALL NrvGetSnapMode(NrvHandle handle, int32_t* mode);
NRV_API NrvResult NRV_CALL NrvSetSnapMode(NrvHandle handle, int32_t mode);
/* 1: new segments are horizontal or vertical. */
NRV_API NrvResult NRV_CALL NrvGetOrtho(NrvHandle handle, int32_t* ortho);
NRV_API NrvResult NRV_CALL NrvSetOrtho(NrvHandle handle, int32_t ortho);

/* The snap point that a command would take for a pixel, by the snap mode, without the feet of perpendiculars, which
 * only a running command has. *kind is 1 for a vertex and other grips, 2 for an insert point, 4 for a midpoint, and
 * (*sx, *sy) the whole pixel under the point; or *kind is 0 and nothing else is written. */
NRV_API NrvResult NRV_CALL NrvSnap(NrvHandle handle, double px, double py, double* sx, double* sy, int32_t* kind);

/* ---- Editing options --------------------------------------------------------------------------------------------- */

/* What a host may choose instead of the classic behaviour of commands, previews and picks; editing-options.md describes
 * both. Each switch is 0 at first, which is the classic behaviour. */
typedef struct NrvEditingOptions {
    uint32_t size;                /* Of this record, in bytes. */
    int32_t strokes_once;         /* 1: a polyline that is moved or taken by a grip is seen whole. */
    int32_t no_self_snap;         /* 1: what a command moves or draws offers it no snap points. */
    int32_t previews_return;      /* 1: previews are drawn again after a paint of the window. */
    int32_t repaints_at_end;      /* 1: the end of every command asks for a repaint. */
    int32_t modified_by_change;   /* 1: NrvGetModified tells of changes, and not of each command. */
    int32_t texts_as_shown;       /* 1: texts are hit where they are seen; figures of labels count in extents. */
    int32_t clean_rectangle;      /* 1: the sides of a rectangle are ordinary lines; its preview is seen whole. */
    int32_t transforms_end_early; /* 1: the right button before the base point ends a command. The windows of this
                                     interface do so in any case. */
    int32_t reserved;             /* 0. */
    double figure_height;         /* Drawing units, above 0, with texts_as_shown: that of the figure of a label. 100. */
    double pixel_scale;           /* Above 0. Factor for what is measured in pixels: how near a click or a snap has to
                                     be, markers, grips. 1 at first, for 96 dots per inch. */
} NrvEditingOptions;

/* Kept through loads and clears, and in no stream. A change takes effect at the next event and asks for no repaint. */
NRV_API NrvResult NRV_CALL NrvGetEditingOptions(NrvHandle handle, NrvEditingOptions* options);
NRV_API NrvResult NRV_CALL NrvSetEditingOptions(NrvHandle handle, const NrvEditingOptions* options);

/* ---- Mapping, zoom, paint ---------------------------------------------------------------------------------------- */

/* How drawing units become pixels. */
typedef struct NrvMapping {
    uint32_t size;   /* Of this record, in bytes. */
    int32_t height;  /* Pixels: the row of the lower edge, on which origin_y lies. */
    double scale;    /* Drawing units per pixel, above 0. Kept in single precision. */
    double origin_x; /* Drawing units: the left edge. */
    double origin_y; /* Drawing units: the lower edge. */
} NrvMapping;

/* The mapping of a view or drawing. Setting one asks for a repaint. */
NRV_API NrvResult NRV_CALL NrvGetMapping(NrvHandle handle, NrvMapping* mapping);
NRV_API NrvResult NRV_CALL NrvSetMapping(NrvHandle handle, const NrvMapping* mapping);
/* Fits the drawing into the window's client area. NRV_E_KIND for a drawing without a window, NRV_E_ARGUMENT when the
 * area is as small as the margin. An empty drawing only gives the mapping the height of the area. */
NRV_API NrvResult NRV_CALL NrvZoomExtents(NrvHandle handle);
/* Fits the drawing into a rectangle of pixels. */
NRV_API NrvResult NRV_CALL NrvZoomInto(NrvHandle handle, int32_t left, int32_t top, int32_t right, int32_t bottom);
/* The margin of both, half of it on either side: in percent of the area, 15 at first and at least 10 pixels, or in
 * pixels when `pixels` is not 0. At most 10000. */
NRV_API NrvResult NRV_CALL NrvSetZoomMargin(NrvHandle handle, int32_t margin, int32_t pixels);
NRV_API NrvResult NRV_CALL NrvToPixels(NrvHandle handle, double x, double y, double* px, double* py);
NRV_API NrvResult NRV_CALL NrvToDrawing(NrvHandle handle, double px, double py, double* x, double* y);
/* The undermost object within four pixels (times the pixel_scale of the editing options) of a pixel, which is the one
 * that a click takes; NRV_OK and 0 for none. `segment` (may be null): of a polyline, else -1. */
NRV_API NrvResult NRV_CALL NrvHitTest(NrvHandle handle, int32_t px, int32_t py, NrvId* id, int32_t* segment);
/* The first polyline with a curved segment within four pixels of a pixel, and that segment; NRV_OK and 0 for none.
 * `segment` may be null. */
NRV_API NrvResult NRV_CALL NrvHitCurve(NrvHandle handle, int32_t px, int32_t py, NrvId* id, int32_t* segment);
/* Paints the drawing, without its background, into a device context of the caller: an HDC. */
NRV_API NrvResult NRV_CALL NrvPaint(NrvHandle handle, void* hdc);

/* 1: numbers of parameters are shown whole; 0: with one decimal at most. At first 0 in a parameter view, else 1. */
NRV_API NrvResult NRV_CALL NrvGetShowDecimals(NrvHandle handle, int32_t* show);
NRV_API NrvResult NRV_CALL NrvSetShowDecimals(NrvHandle handle, int32_t show);
/* The background, 0x00RRGGBB; black at first. */
NRV_API NrvResult NRV_CALL NrvGetBackground(NrvHandle handle, uint32_t* color);
NRV_API NrvResult NRV_CALL NrvSetBackground(NrvHandle handle, uint32_t color);
/* The same as an entry of the colour table, 0 to 140, or -2 for the colour of NrvSetBackground, which is
 * kept while an index is set. */
NRV_API NrvResult NRV_CALL NrvGetBackgroundIndex(NrvHandle handle, int32_t* index);
NRV_API NrvResult NRV_CALL NrvSetBackgroundIndex(NrvHandle handle, int32_t index);
/* An entry of the colour table, 0x00RRGGBB. NRV_E_ARGUMENT outside 0 to 140. On any thread. */
NRV_API NrvResult NRV_CALL NrvGetTableColor(int32_t index, uint32_t* color);
/* The colour index of the objects that commands make; 137, white, at first. Not part of the stream. */
NRV_API NrvResult NRV_CALL NrvGetPenIndex(NrvHandle handle, int32_t* index);
NRV_API NrvResult NRV_CALL NrvSetPenIndex(NrvHandle handle, int32_t index);

/* ---- Pictures ---------------------------------------------------------------------------------------------------- */
/* Of views and of drawings without a window. A picture shows what the view's window shows at that size, without the
 * marks of the selection; the drawing is as before afterwards. */

/* Forms of pictures. */
enum NrvFormat {
    NRV_FORMAT_PNG = 1,   /* 24 bits a pixel, 32 without a background, 1 with NRV_COLORS_MONOCHROME. */
    NRV_FORMAT_EMF = 2,   /* An enhanced metafile: lines as lines, texts as texts. */
    NRV_FORMAT_SVG = 3,   /* UTF-8: arcs as arcs, texts as texts, layers as groups. */
    NRV_FORMAT_PIXELS = 4 /* A uint32_t for each pixel, 0xAARRGGBB, from the top left corner, row by row. The colours
                             are not multiplied by alpha. */
};

/* What a picture shows. */
enum NrvShow {
    NRV_SHOW_FIT = 0,    /* The whole drawing, or with `selected_only` what is selected, with a margin. */
    NRV_SHOW_WINDOW = 1, /* The rectangle `window`, in the middle where the proportions differ. */
    NRV_SHOW_MAPPING = 2 /* What the mapping of the view or drawing shows, from its top left corner on. */
};

/* The colours of a picture. */
enum NrvColors {
    NRV_COLORS_STORED = 0,
    NRV_COLORS_BLACK = 1,     /* Every stroke and text black, every filled area and the background white. */
    NRV_COLORS_MONOCHROME = 2 /* The same, with texts that are not smoothed. */
};

/* The background of a picture. */
enum NrvGround {
    NRV_GROUND_DRAWING = 0, /* That of the drawing; white in the two black forms. */
    NRV_GROUND_COLOR = 1,   /* `ground_color`. */
    NRV_GROUND_NONE = 2     /* Transparent. */
};

/* How a picture is made. Begin with NrvGetDefaultPicture or NrvGetPaperPicture and change single fields. */
typedef struct NrvPicture {
    uint32_t size;     /* Of this record, in bytes. */
    int32_t show;      /* Of enum NrvShow. */
    int32_t width;     /* Pixels, 1 to 32767, and at most 2^27 pixels in all. 0 in one of the two: it follows */
    int32_t height;    /* from the other by the proportion of what is shown. */
    double scale;      /* Drawing units per pixel. Above 0 the size follows from it; not for NRV_SHOW_MAPPING. */
    NrvRect window;    /* For NRV_SHOW_WINDOW. */
    int32_t keep_size; /* 1: also with a scale the size is width and height, and what is shown is in its middle. */
    int32_t margin;    /* For NRV_SHOW_FIT: both sides together, in percent of the picture, 10 pixels at least. */
    int32_t margin_in_pixels; /* 1: the margin is in pixels. */
    int32_t colors;           /* Of enum NrvColors. */
    int32_t ground;           /* Of enum NrvGround. */
    uint32_t ground_color;    /* 0x00RRGGBB. */
    double line_width_scale;  /* Multiplies the widths of pens; above 0, at most 1000. */
    int32_t least_line_width; /* Pixels, 1 to 1000: thinner lines are widened to it. */
    int32_t selected_only;    /* 1: only what is selected, without the net. */
    int32_t net;              /* 0: without the background net. */
    int32_t grips;            /* 1: with the marks of the selection; PNG, EMF and pixels. */
    int32_t decimals;         /* -1: numbers as the view or drawing shows them; else as in NrvSetShowDecimals. */
    int32_t reserved;         /* 0. */
} NrvPicture;

/* Facts about a picture that was made. */
typedef struct NrvPictureResult {
    uint32_t size;     /* Of this record, in bytes. */
    int32_t width;     /* Pixels. */
    int32_t height;    /* Pixels: also the row of the lower edge, on which origin_y lies. */
    uint32_t left_out; /* How many objects are not in it, because painting them failed. An SVG also leaves
                            out those that are drawn by inversion and those with numbers that are not finite. */
    double scale;      /* Drawing units per pixel. */
    double origin_x;   /* Drawing units: the left edge. */
    double origin_y;   /* Drawing units: the lower edge. */
} NrvPictureResult;

/* 1024 by 768 pixels of the whole drawing with a margin of 15 percent, as stored, on its own background. */
NRV_API NrvResult NRV_CALL NrvGetDefaultPicture(NrvPicture* picture);
/* For a sheet of paper whose printable area is so many dots wide and high: black on white, thin lines a quarter of a
 * millimetre wide. `n` 0 fits the drawing; otherwise it is shown as 1:n in the middle, a drawing unit being a
 * millimetre. For NrvPaintPicture with the device context of a printer. */
NRV_API NrvResult NRV_CALL NrvGetPaperPicture(NrvPicture* picture, int32_t width, int32_t height, double dots_per_inch,
                                              double n);

/* For the functions below: `picture` may be null for the default one; NRV_E_ARGUMENT when its size, scale or another
 * number is out of range. `result` may be null, but not where it is the only result. NRV_E_PAINT when `left_out`
 * is not 0: the picture is made all the same. NRV_E_MEMORY without memory for it, NRV_E_SYSTEM when the system has no
 * encoder for PNG. What goes wrong with an object is an NRV_N_MESSAGE after the picture. */

/* The size and the mapping of the picture, without making it. */
NRV_API NrvResult NRV_CALL NrvMeasurePicture(NrvHandle handle, const NrvPicture* picture, NrvPictureResult* result);
/* A picture of enum NrvFormat into the caller's buffer; capacity and size in bytes. Each call makes it anew, also one
 * that asks for the size alone. */
NRV_API NrvResult NRV_CALL NrvRender(NrvHandle handle, const NrvPicture* picture, int32_t format, void* buffer,
                                     uint32_t capacity, uint32_t* size, NrvPictureResult* result);
/* The picture into a file. An existing file is replaced only by a complete one. NRV_E_FILE when it can't be written. */
NRV_API NrvResult NRV_CALL NrvRenderFile(NrvHandle handle, const NrvPicture* picture, int32_t format,
                                         const NrvChar* path, NrvPictureResult* result);
/* Onto a device context of the caller: an HDC whose unit is the pixel, with the top left corner at its origin. What
 * lies outside the picture is not clipped. */
NRV_API NrvResult NRV_CALL NrvPaintPicture(NrvHandle handle, const NrvPicture* picture, void* hdc,
                                           NrvPictureResult* result);

/* ---- Parts of a drawing, clipboard ------------------------------------------------------------------------------- */

/* Some objects of the drawing as a stream of their own, in drawing order; anything that loads drawings loads it.
 * NRV_E_ARGUMENT for none, NRV_E_KIND for objects of the net. */
NRV_API NrvResult NRV_CALL NrvSaveObjects(NrvHandle handle, const NrvId* ids, uint32_t id_count, void* buffer,
                                          uint32_t capacity, uint32_t* size);
/* Adds the objects of a stream on top of the drawing, moved by (dx, dy) drawing units as NrvTransform moves. Adds all
 * or nothing: NRV_E_REFUSED, without a message, for a stream that is not complete or has no object. `count` (may be
 * null) is how many there are; they are the last ones of NRV_LIST_DRAWING. */
NRV_API NrvResult NRV_CALL NrvInsertBuffer(NrvHandle handle, const void* data, uint32_t size, double dx, double dy,
                                           uint32_t* count);
/* The same stream to the clipboard, in the registered format "NRVectorView Objects". Windows only. NRV_E_SYSTEM while
 * another program has the clipboard open. */
NRV_API NrvResult NRV_CALL NrvCopyObjects(NrvHandle handle, const NrvId* ids, uint32_t id_count);
/* A picture to the clipboard, as an enhanced metafile and in the registered format "PNG". Windows only. `picture` may
 * be null. NRV_E_PAINT as above. */
NRV_API NrvResult NRV_CALL NrvCopyPicture(NrvHandle handle, const NrvPicture* picture);
/* 1 when there are objects on the clipboard. On any thread. */
NRV_API NrvResult NRV_CALL NrvCanPaste(int32_t* can);
/* Begins a command, "paste", that puts the objects of the clipboard where the user clicks: the lower left corner of
 * their extent is placed at the click. Windows only. A running command is cancelled. NRV_E_STATE when there are none,
 * NRV_E_REFUSED when they can't be read. */
NRV_API NrvResult NRV_CALL NrvPaste(NrvHandle handle);

/* ---- Editing a parameter: windows of NRV_PARM_VIEW_CLASS only -----------------------------------------------------
 */

/* Opens the edit box over a parameter, as a click does. NRV_E_REFUSED when it did not open: the parameter's type is 4,
 * a handler of NRV_N_EDIT_OPENING refused, or a refused text keeps the box. */
NRV_API NrvResult NRV_CALL NrvBeginEdit(NrvHandle handle, NrvId id);
/* The parameter that is being edited; 0 for none. */
NRV_API NrvResult NRV_CALL NrvGetEdit(NrvHandle handle, NrvId* id);
/* The text in the open box, not stored yet. NRV_E_STATE when none is open. */
NRV_API NrvResult NRV_CALL NrvGetEditText(NrvHandle handle, NrvChar* buffer, uint32_t capacity, uint32_t* length);
/* Replaces the text in the open box; within NRV_N_EDIT_STORING the text that is to be stored. */
NRV_API NrvResult NRV_CALL NrvSetEditText(NrvHandle handle, const NrvChar* text);
/* Ends the edit and stores its text. NRV_E_REFUSED when it was refused and the box is still open. NRV_OK when none is
 * open. */
NRV_API NrvResult NRV_CALL NrvEndEdit(NrvHandle handle);
/* 1: a refused text stays in the box, which keeps the focus, until one is accepted. 0, as at first: the next edit that
 * opens drops it. */
NRV_API NrvResult NRV_CALL NrvGetStrictRefusal(NrvHandle handle, int32_t* strict);
NRV_API NrvResult NRV_CALL NrvSetStrictRefusal(NrvHandle handle, int32_t strict);
/* 1, as at first: the wheel zooms. */
NRV_API NrvResult NRV_CALL NrvGetWheel(NrvHandle handle, int32_t* on);
NRV_API NrvResult NRV_CALL NrvSetWheel(NrvHandle handle, int32_t on);

/* The tooltip's text, until the mouse comes to another object, whose description it shows; null: no tooltip. */
NRV_API NrvResult NRV_CALL NrvSetTooltip(NrvHandle handle, const NrvChar* text);

/* ---- Events ------------------------------------------------------------------------------------------------------ */

/* Values of header.code. What each one fills in is told in its lines; all other fields are 0. */
enum NrvCode {
    /* The left button was pressed and no command was running: id (0: nothing was hit), kind, segment, px, py, x, y. Not
     * for a press that opens an edit. */
    NRV_N_CLICK = 0x4E01,
    NRV_N_DOUBLE_CLICK = 0x4E02,  /* Of the left button: the same fields. */
    NRV_N_HOVER = 0x4E03,         /* Another object, or none, is under the mouse: the same fields. */
    NRV_N_CURSOR = 0x4E04,        /* The mouse has moved: px, py, x, y. */
    NRV_N_SELECTION = 0x4E05,     /* The selection has changed: ids and count, all that are selected now. */
    NRV_N_COMMAND_BEGUN = 0x4E06, /* text: the word; "grip" for a grip that is taken. */
    NRV_N_COMMAND_ENDED = 0x4E07, /* text: the word; reason of enum NrvEnd. */
    /* The drawing is about to change: reason of enum NrvChange; ids and count of the objects, where they are known
     * before. A command that begins is announced as NRV_CHANGE_COMMAND with its word in text. */
    NRV_N_CHANGING = 0x4E08,
    NRV_N_CHANGED = 0x4E09,      /* reason of enum NrvChange; ids and count: of removed ones those that they had. */
    NRV_N_EDIT_OPENING = 0x4E0A, /* An edit box is about to open: id, text. answer 0 refuses. */
    NRV_N_EDIT_ACCEPT = 0x4E0B,  /* The edit is to end: id, text as typed. answer 0 refuses; the box stays open. */
    /* The text is to be stored: id, text, old_text. NrvSetEditText replaces it. */
    NRV_N_EDIT_STORING = 0x4E0C,
    NRV_N_EDIT_STORED = 0x4E0D, /* id, text, old_text. */
    NRV_N_EDIT_ENDED = 0x4E0E,  /* The box is about to close: id. */
    /* A message: text, reason: the flags of MessageBox. answer: set to a number of a button (IDOK 1, IDCANCEL 2, IDYES
     * 6, IDNO 7) it is the answer, and no box is shown. Left at 0: a box is shown, see NrvSetMessages. */
    NRV_N_MESSAGE = 0x4E0F,
    /* Tab or Return has ended the edit of the parameter id, and the next one is about to open. answer 0 prevents that;
     * the handler may open another one by NrvBeginEdit. */
    NRV_N_EDIT_NEXT = 0x4E10,
    /* The window is being painted, and the drawing is: hdc, in pixels of the window, on which the handler may paint
     * more. What it selects there is put back after it. */
    NRV_N_PAINT = 0x4E11,
    NRV_N_STEPS = 0x4E12 /* What can be undone or redone has changed: reason of enum NrvSteps. For menus. */
};

/* How a command ended: it did its work, it was cancelled, or an object that it worked on was freed. */
enum NrvEnd { NRV_END_DONE = 1, NRV_END_CANCELLED = 2, NRV_END_LOST = 3 };

/* What changes in a drawing. */
enum NrvChange {
    NRV_CHANGE_ADDED = 1,      /* Objects are new. */
    NRV_CHANGE_REMOVED = 2,    /* Objects are gone. */
    NRV_CHANGE_MODIFIED = 3,   /* Objects have other values. */
    NRV_CHANGE_ORDER = 4,      /* Objects lie elsewhere in the drawing order. */
    NRV_CHANGE_LOADED = 5,     /* Everything is new. No ids. */
    NRV_CHANGE_CLEARED = 6,    /* All objects are gone. */
    NRV_CHANGE_LAYERS = 7,     /* A layer is new or has other values. */
    NRV_CHANGE_BACKGROUND = 8, /* The background has another colour. */
    NRV_CHANGE_COMMAND = 9,    /* In NRV_N_CHANGING only. */
    /* An undo or a redo; no ids. Before its NRV_N_CHANGED those with the objects come, as for a command; what no object
     * has, such as the background, may have changed too. */
    NRV_CHANGE_HISTORY = 10
};

/* What has happened to the steps of the history. */
enum NrvSteps {
    NRV_STEPS_NEW = 1,       /* There is a new one; those that could be redone are gone. */
    NRV_STEPS_UNDONE = 2,    /* One was taken back. */
    NRV_STEPS_REDONE = 3,    /* One was repeated. */
    NRV_STEPS_FORGOTTEN = 4, /* Some are gone: by the limits, or because the drawing was loaded or cleared. */
    NRV_STEPS_SAVED = 5      /* The drawing was saved: to come back to this state clears the modified flag. */
};

/* Laid out as NMHDR. */
typedef struct NrvEventHeader {
    void* window;       /* HWND; null for a drawing. */
    uintptr_t identity; /* The window's control id. */
    uint32_t code;      /* Of enum NrvCode. */
} NrvEventHeader;

/* Valid until the handler returns, with all that it points to. A field that was added later is there when `size`
 * reaches it. */
typedef struct NrvEvent {
    NrvEventHeader header;   /* Who tells what. */
    uint32_t size;           /* Of this record, in bytes. */
    int32_t answer;          /* The handler writes it; 1 at first, 0 in NRV_N_MESSAGE. */
    NrvHandle source;        /* The view or drawing. */
    NrvId id;                /* The object; 0 for none. */
    const NrvId* ids;        /* Several objects; null for none. */
    const NrvChar* text;     /* As the code tells; else empty. */
    const NrvChar* old_text; /* The text that was there before; else empty. */
    double x;                /* Drawing units. */
    double y;                /* Drawing units, upwards. */
    int32_t px;              /* Pixels. */
    int32_t py;              /* Pixels, downwards. */
    uint32_t count;          /* Of ids. */
    int32_t kind;            /* Of the object, of enum NrvKind. */
    int32_t segment;         /* Of a polyline; -1 for none. */
    int32_t reason;          /* As the code tells. */
    void* hdc;               /* Null but in NRV_N_PAINT: an HDC. */
} NrvEvent;

/* What a host gives to NrvSetCallback. The event is valid until it returns. */
typedef void(NRV_CALL* NrvCallback)(NrvEvent* event, void* user);

/* Called for each event before the parent gets it; null for none. `user` is given back with each call. */
NRV_API NrvResult NRV_CALL NrvSetCallback(NrvHandle handle, NrvCallback callback, void* user);
/* Which events are sent: bit (code - 0x4E01) for each code. At first all but NRV_N_HOVER, which costs a hit test for
 * each move of the mouse, and NRV_N_PAINT. Without NRV_N_CHANGED no comparison is made at the end of a command. */
#define NRV_EVENT_BIT(code) (1u << ((code)-0x4E01))
/* All such bits of a view or drawing together. */
NRV_API NrvResult NRV_CALL NrvGetEventMask(NrvHandle handle, uint32_t* mask);
NRV_API NrvResult NRV_CALL NrvSetEventMask(NrvHandle handle, uint32_t mask);

/* What happens with a message that no handler of NRV_N_MESSAGE answers. */
enum NrvMessages {
    NRV_MESSAGES_BOX = 0,   /* It is shown in a box. Windows begin so. */
    NRV_MESSAGES_SILENT = 1 /* It is not shown; a question is answered Cancel or No. Drawings have this only. */
};
/* Of enum NrvMessages. */
NRV_API NrvResult NRV_CALL NrvGetMessages(NrvHandle handle, int32_t* mode);
NRV_API NrvResult NRV_CALL NrvSetMessages(NrvHandle handle, int32_t mode);
/* The text of the last message, also of one that was not shown. Empty before the first one, and at the beginning of
 * each load, save and paint by a function of this header. */
NRV_API NrvResult NRV_CALL NrvGetLastMessage(NrvHandle handle, NrvChar* buffer, uint32_t capacity, uint32_t* length);

/* For message loops: gives a message to the view that it belongs to, before accelerators are translated. `msg` is an
 * MSG*. *translated is 1 when the view has used it up: then it is not dispatched. No loop needs this: without it Tab,
 * Return, Escape and typed distances work all the same, after the host's accelerators. */
NRV_API NrvResult NRV_CALL NrvTranslateMessage(void* msg, int32_t* translated);

#ifdef __cplusplus
}
#endif

#endif
