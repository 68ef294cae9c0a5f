// What a parameter view tells its parent window through WM_NOTIFY: the record and its codes, for hosts.
// Layer 11: views and dialogs.
#pragma once

#include "VectorViewApi.h"

#include <cstddef>

class CCircle;
class CLine;
class CPLine;
class CText;

// Notification codes.
inline constexpr UINT kVpnQueryEdit = static_cast<UINT>(-160); // An edit box is about to open; nKind -1 refuses it.
inline constexpr UINT kVpnClick = static_cast<UINT>(-161);     // An object was clicked, or nothing was.
inline constexpr UINT kVpnDblClk = static_cast<UINT>(-162);    // Left double click; only the header is filled in.

// Compatibility 68: an arc is reported as a circle.
// Values of nKind in kVpnClick. There is no 3 in practice: an arc is a circle too, and circles are tested first.
inline constexpr int kVpkNothing = 0; // No object, or one of a kind without a number.
inline constexpr int kVpkLine = 1;    // See pLine.
inline constexpr int kVpkCircle = 2;  // See pCircle.
inline constexpr int kVpkArc = 3;     // Never sent.
inline constexpr int kVpkPLine = 4;   // See pPLine and nSelLine.
inline constexpr int kVpkParm = 5;    // A CTextParm in pText.
inline constexpr int kVpkText = 6;    // A plain text in pText.
// The host's answer to kVpnQueryEdit: no edit box.
inline constexpr int kVpkRefused = -1;

// Each view has one record, which keeps its values between messages: only the field that belongs to nKind is written,
// so read it by nKind. All pointers belong to the view's document. lParam points to the record, wParam is idFrom.
struct NMVECTORPARM {
    HWND hwndFrom;    // The view; this and the next two lie as in NMHDR.
    UINT_PTR idFrom;  // The view's control ID.
    UINT code;        // One of the kVpn constants.
    CText* pText;     // Kinds 5 and 6, and the parameter in question in kVpnQueryEdit; null for kind 0.
    int nKind;        // One of the kVpk constants; in kVpnQueryEdit the parent's answer.
    int nSelLine;     // Kind 4: the segment that was hit.
    CLine* pLine;     // Kind 1.
    CCircle* pCircle; // Kinds 2 and 3.
    CPLine* pPLine;   // Kind 4.
};

static_assert(offsetof(NMVECTORPARM, idFrom) == offsetof(NMHDR, idFrom) &&
                  offsetof(NMVECTORPARM, code) == offsetof(NMHDR, code) &&
                  offsetof(NMVECTORPARM, pText) >= sizeof(NMHDR),
              "a parent reads the record through an NMHDR first");
