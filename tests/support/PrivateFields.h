// Private and protected fields of the library's classes, for tests alone.
// Layer 16: tests.
#pragma once

#include "CommandOperationManager.h"
#include "CommandOperationTrans.h"
#include "CommandSelectGripPoint.h"
#include "Document.h"
#include "OperationCreateCircle.h"
#include "OperationCreateLabel.h"
#include "OperationCreatePline.h"
#include "OperationCreateRectangle.h"
#include "PLine.h"
#include "VectorLabel.h"

// A field is opened by a row NR_PEEK(Tag, Class, Type, Member) below, and read or written by PeekAt(object, Tag()). The
// language lets an explicit instantiation name a private member.
template <typename Tag, typename Tag::type Pointer>
struct MemberAccess {
    friend typename Tag::type MemberOf(Tag) { return Pointer; }
};

template <typename Class, typename Tag>
auto& PeekAt(Class& object, Tag tag) {
    return object.*MemberOf(tag);
}

#define NR_PEEK(Tag, Class, Type, Member)                                                                              \
    struct Tag {                                                                                                       \
        using type = Type Class::*;                                                                                    \
        friend type MemberOf(Tag);                                                                                     \
    };                                                                                                                 \
    template struct MemberAccess<Tag, &Class::Member>;

using PixelArray = CArray<CPoint, CPoint&>;
using ColorArray = CArray<DWORD, DWORD&>;

// clang-format off
NR_PEEK(RunningTool, CCommandOperation, CCommandOperation*, m_pCommand)
NR_PEEK(BandDrawn, CCommandOperation, int, m_ShirrDrawn)
NR_PEEK(BandFrom, CCommandOperation, CPoint, m_ShirrStart)
NR_PEEK(BandTo, CCommandOperation, CPoint, m_ShirrEnd)
NR_PEEK(BandStyle, CCommandOperation, int, m_ShirrPenStyle)
NR_PEEK(ToolStep, CCommandOperation, int, m_Step)
NR_PEEK(MarkDrawn, CCommandOperation, int, m_SnapMarkDrawn)
NR_PEEK(MarkAt, CCommandOperation, CGePoint2d, m_SnapMark)
NR_PEEK(AcceptedPoint, CCommandOperation, CGePoint2d, m_LastPoint)
NR_PEEK(ToolEdit, CCommandOperation, CEdit, m_Edit)
NR_PEEK(ToolAlive, CCommandOperation, CKxAlive, m_Alive)
NR_PEEK(InCommand, CCommandOperationManager, int, m_InCommand)
NR_PEEK(DefaultCursor, CCommandOperationManager, HCURSOR, m_hDefaultCursor)
NR_PEEK(TrackedGrips, CCommandOperationManager, CGePointArray, m_GripPoints)
NR_PEEK(Assistants, CCommandOperationManager, PixelArray, m_AssistantPoints)
NR_PEEK(TransPreview, CCommandOperationTrans, int, m_PreviewDrawn)
NR_PEEK(GripPreview, CCommandSelectGripPoint, int, m_PreviewDrawn)
NR_PEEK(GripTakenIndex, CCommandSelectGripPoint, int, m_GripIndex)
NR_PEEK(Clicks, COperationCreateObjAb, int, m_ClickCount)
NR_PEEK(CircleDrawn, COperationCreateCircle, int, m_ObjectDrawn)
NR_PEEK(LabelDrawn, COperationCreateLabel, int, m_ObjectDrawn)
NR_PEEK(TextAngle, CText, float, m_Angle)
NR_PEEK(PlinePoints, COperationCreatePline, CGePointArray, m_Points)
NR_PEEK(PlineToBottom, COperationCreatePline, int, m_AddFront)
NR_PEEK(RectPreview, COperationCreateRectangle, int, m_PreviewDrawn)
NR_PEEK(SpareObjects, CGraphicDocument, CDrawableArray, m_SpareDrawableObjs)
NR_PEEK(SegmentColors, CPLine, ColorArray, m_SegPenColorList)
NR_PEEK(SegmentColorFlags, CPLine, CUIntArray, m_SegPenFlagList)
NR_PEEK(LabelFigure, CKXVectorLabel, CText, m_LabelText)
// clang-format on
