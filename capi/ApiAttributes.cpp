// The C interface: the numbers and strings of objects, parameters, property rows.
// Layer 12: capi.

#include "NrvCall.h"

#include "Arc.h"
#include "CenterPoint.h"
#include "CombRect.h"
#include "Line.h"
#include "PLine.h"
#include "TextParm.h"
#include "VectorGraphic.h"
#include "VectorLabel.h"

namespace {

// Calls `visit` with the object as the first of the classes that it belongs to. False when it belongs to none.
template <class... Kinds, class Visit>
bool VisitAs(CDrawable& object, Visit visit) {
    const auto tryOne = [&](auto* typed) {
        if (typed != nullptr) {
            visit(*typed);
        }
        return typed != nullptr;
    };
    return (tryOne(dynamic_cast<Kinds*>(&object)) || ...);
}

bool IsFlag(int32_t value) {
    return value == 0 || value == 1;
}

bool IsShort(int32_t value) {
    return value >= INT16_MIN && value <= INT16_MAX;
}

// ---- Whole numbers ----

// One whole number of an object: read when `set` is null, else written. NRV_E_ARGUMENT when the value is out of its
// range; with `apply` false nothing is written.
NrvResult AccessInt(CNrvControl& control, CDrawable& object, int32_t what, int32_t* get, int32_t set, bool apply) {
    const auto result = [&](bool has, bool valid) -> NrvResult {
        return !has ? NRV_E_KIND : get != nullptr || valid ? NRV_OK : NRV_E_ARGUMENT;
    };
    // The member functions of one kind; read or written as asked.
    const auto access = [&](auto read, auto write) {
        if (get != nullptr) {
            *get = static_cast<int32_t>(read());
        } else if (apply) {
            write();
        }
    };
    bool has = true;
    switch (what) {
    case NRV_INT_COLOR:
        access([&] { return NrvSwapColor(object.GetPenColor()); },
               [&] { object.SetPenColor(NrvSwapColor(static_cast<DWORD>(set))); });
        return NRV_OK;
    case NRV_INT_COLOR_INDEX:
        access([&] { return object.GetPenColorIndex(); }, [&] { object.SetPenColorIndex(static_cast<short>(set)); });
        return result(true, set >= kColorExplicit && set <= 140);
    case NRV_INT_LINE_TYPE:
        access([&] { return object.GetLineType(); }, [&] { object.SetLineType(static_cast<short>(set)); });
        return result(true, set >= -1 && set <= PS_DASHDOTDOT);
    case NRV_INT_LAYER:
        access([&] { return object.GetLayer(); }, [&] { object.SetLayer(static_cast<short>(set)); });
        return result(true, set >= 0 && IsShort(set));
    case NRV_INT_VISIBLE:
        access([&] { return object.GetIsShow() != 0; }, [&] { object.SetIsShow(set); });
        return result(true, IsFlag(set));
    case NRV_INT_SELECTABLE:
        access([&] { return object.isCanSelect() != 0; }, [&] { object.SetCanBeSelect(set); });
        return result(true, IsFlag(set));
    case NRV_INT_SELECTED:
        if (control.IndexOf(&object) < 0) {
            return NRV_E_KIND;
        }
        access(
            [&] { return control.Document().IsSelected(&object); },
            [&] { set != 0 ? control.Document().AddSelected(&object) : control.Document().RemoveSelected(&object); });
        return result(true, IsFlag(set));
    case NRV_INT_WIDTH_LOCKED:
        has = VisitAs<CLine, CPLine, CCircle, CCenterPoint, CKXVectorLabel>(object, [&](auto& typed) {
            access([&] { return typed.GetLockMode() != 0; }, [&] { typed.SetLockMode(set); });
        });
        return result(has, IsFlag(set));
    case NRV_INT_CLOSED:
        has = VisitAs<CPLine>(object, [&](CPLine& pline) {
            access([&] { return pline.IsClosed() != 0; }, [&] { pline.SetClose(set); });
        });
        return result(has, IsFlag(set));
    case NRV_INT_FILLED:
        has = NrvKindOf(&object) == NRV_KIND_CIRCLE && VisitAs<CCircle>(object, [&](CCircle& circle) {
                  access([&] { return circle.IsFill() != 0; }, [&] { circle.SetFill(set); });
              });
        return result(has, IsFlag(set));
    case NRV_INT_PARM_TYPE:
        has = VisitAs<CTextParm>(object, [&](CTextParm& parm) {
            access([&] { return parm.GetParmType(); }, [&] { parm.SetParmType(static_cast<short>(set)); });
        });
        return result(has, IsShort(set));
    case NRV_INT_PARM_BOX:
        has = VisitAs<CTextParm>(object, [&](CTextParm& parm) {
            access([&] { return parm.GetNeedEditBox() != 0; }, [&] { parm.SetNeedEditBox(set); });
        });
        return result(has, IsFlag(set));
    case NRV_INT_FIGURE:
        has = VisitAs<CKXVectorLabel>(object, [&](CKXVectorLabel& label) {
            access([&] { return label.GetTextShow() != 0; }, [&] { label.SetTextShow(set); });
        });
        return result(has, IsFlag(set));
    case NRV_INT_GAP:
        has = VisitAs<CKXVectorLabel>(object, [&](CKXVectorLabel& label) {
            access([&] { return label.GetHasTextHole(); }, [&] { label.SetHasTextHole(set != 0); });
        });
        return result(has, IsFlag(set));
    case NRV_INT_INVERTED:
        access([&] { return object.GetDrawState() == CDrawable::Dragging; },
               [&] {
                   if (set != 0) {
                       control.Document().RemoveSelected(&object);
                       object.SetDrawState(CDrawable::Dragging);
                   } else if (object.GetDrawState() != CDrawable::Selected) {
                       object.SetDrawState(CDrawable::Normal);
                   }
               });
        return result(true, IsFlag(set));
    case NRV_INT_BRUSH:
        access([&] { return object.GetColorBrush(); }, [&] { object.SetColorBrush(static_cast<short>(set)); });
        return result(true, IsShort(set));
    case NRV_INT_TEXT_COLOR:
        has = VisitAs<CText>(object, [&](CText& text) {
            access([&] { return NrvSwapColor(text.GetBKColor()); },
                   [&] { text.SetBKColor(NrvSwapColor(static_cast<DWORD>(set))); });
        });
        return result(has, true);
    case NRV_INT_TEXT_OPAQUE:
        has = VisitAs<CText>(object, [&](CText& text) {
            access([&] { return text.GetBKMode() == OPAQUE; },
                   [&] { text.SetBKMode(set != 0 ? OPAQUE : TRANSPARENT); });
        });
        return result(has, IsFlag(set));
    case NRV_INT_NUMBER:
        access([&] { return object.GetID(); }, [] {});
        return result(get != nullptr, true);
    default:
        return NRV_E_ARGUMENT;
    }
}

// ---- Numbers ----

// The two fields that their classes can set but not read.
struct COpenText : CText {
    static float Angle(CText& text) { return text.*(&COpenText::m_Angle); }
};

struct COpenWidth : CDrawable {
    static void Set(CDrawable& object, float width) { object.*(&COpenWidth::m_LineWide) = width; }
};

NrvResult AccessDouble(CDrawable& object, int32_t what, double* get, double set, bool apply) {
    const auto access = [&](auto read, auto write) {
        if (get != nullptr) {
            *get = static_cast<double>(read());
        } else if (apply) {
            write();
        }
    };
    const auto narrow = static_cast<float>(set);
    bool has = false;
    bool valid = get != nullptr || NrvFitsFloat(set);
    switch (what) {
    case NRV_DOUBLE_LINE_WIDTH:
        has = true;
        valid = valid && (get != nullptr || set >= 0.0 || set == -1.0);
        access([&] { return object.GetLineWide(); }, [&] { COpenWidth::Set(object, narrow); });
        break;
    case NRV_DOUBLE_RADIUS:
        valid = std::isfinite(set);
        has = VisitAs<CCircle>(
            object, [&](CCircle& circle) { access([&] { return circle.Radius(); }, [&] { circle.setRadius(set); }); });
        break;
    case NRV_DOUBLE_START_ANGLE:
        valid = std::isfinite(set);
        has = VisitAs<CArc>(
            object, [&](CArc& arc) { access([&] { return arc.GetStartAngle(); }, [&] { arc.SetStartAngle(set); }); });
        break;
    case NRV_DOUBLE_END_ANGLE:
        valid = std::isfinite(set);
        has = VisitAs<CArc>(
            object, [&](CArc& arc) { access([&] { return arc.GetEndAngle(); }, [&] { arc.SetEndAngle(set); }); });
        break;
    case NRV_DOUBLE_TEXT_HEIGHT:
        valid = valid && (get != nullptr || set > 0.0);
        has = VisitAs<CText>(object, [&](CText& text) {
            access([&] { return text.GetTextHeight(); }, [&] { text.SetTextHeight(narrow); });
        });
        break;
    case NRV_DOUBLE_TEXT_WIDTH:
        has = VisitAs<CText>(object, [&](CText& text) {
            access([&] { return text.GetTextWide(); }, [&] { text.SetTextWide(narrow); });
        });
        break;
    case NRV_DOUBLE_TEXT_ANGLE:
        has = VisitAs<CText>(object, [&](CText& text) {
            access([&] { return COpenText::Angle(text); }, [&] { text.SetAngle(narrow); });
        });
        break;
    case NRV_DOUBLE_TEXT_RATIO:
        has = VisitAs<CText>(object, [&](CText& text) {
            access([&] { return text.GetTextRatio(); }, [&] { text.SetTextRatio(narrow); });
        });
        break;
    case NRV_DOUBLE_TICK_SIZE:
        valid = std::isfinite(set);
        has = VisitAs<CKXVectorLabel>(object, [&](CKXVectorLabel& label) {
            access([&] { return label.GetLabelLength(); }, [&] { label.SetLabelLength(set); });
        });
        break;
    case NRV_DOUBLE_TICK_WIDTH:
        valid = std::isfinite(set);
        has = VisitAs<CKXVectorLabel>(object, [&](CKXVectorLabel& label) {
            access([&] { return label.GetLabelWidth(); }, [&] { label.SetLabelWidth(set); });
        });
        break;
    case NRV_DOUBLE_GAP:
        valid = std::isfinite(set);
        has = VisitAs<CKXVectorLabel>(object, [&](CKXVectorLabel& label) {
            access([&] { return label.GetTextHoleWidth(); }, [&] { label.SetTextHoleWidth(set); });
        });
        break;
    case NRV_DOUBLE_SCALE:
        has = true;
        access([&] { return object.GetScale(); }, [&] { object.SetScale(narrow); });
        break;
    case NRV_DOUBLE_TEXT_OFFSET:
        has = VisitAs<CText>(
            object, [&](CText& text) { access([&] { return text.GetOffWide(); }, [&] { text.SetOffWide(narrow); }); });
        break;
    default:
        return NRV_E_ARGUMENT;
    }
    return !has ? NRV_E_KIND : valid ? NRV_OK : NRV_E_ARGUMENT;
}

// ---- Strings ----

NrvResult AccessString(CDrawable& object, int32_t what, CString* get, LPCTSTR set, bool apply) {
    const auto access = [&](auto read, auto write) {
        if (get != nullptr) {
            *get = read();
        } else if (apply) {
            write();
        }
    };
    bool has = false;
    switch (what) {
    case NRV_STRING_TEXT:
        has = VisitAs<CText>(object,
                             [&](CText& text) { access([&] { return text.GetText(); }, [&] { text.SetText(set); }); });
        break;
    case NRV_STRING_NAME:
        has = VisitAs<CLine, CPLine, CCircle, CCenterPoint, CTextParm>(
                  object,
                  [&](auto& typed) { access([&] { return typed.GetParmName(); }, [&] { typed.SetParmName(set); }); }) ||
              VisitAs<CCombRect>(object, [&](CCombRect& frame) {
                  access([&] { return frame.GetVectorId(); }, [&] { frame.SetVectorId(set); });
              });
        break;
    case NRV_STRING_MESSAGE:
        has = VisitAs<CLine, CPLine, CCircle, CCenterPoint, CTextParm>(
            object, [&](auto& typed) { access([&] { return typed.GetMsgInfo(); }, [&] { typed.SetMsgInfo(set); }); });
        break;
    case NRV_STRING_DESCRIPTION:
        has = VisitAs<CTextParm>(
            object, [&](CTextParm& parm) { access([&] { return parm.GetParmDes(); }, [&] { parm.SetParmDes(set); }); });
        break;
    case NRV_STRING_EXPRESSION:
        has = VisitAs<CTextParm>(object, [&](CTextParm& parm) {
            access([&] { return parm.GetParmRegularExp(); }, [&] { parm.SetParmRegularExp(set); });
        });
        break;
    case NRV_STRING_LINK:
        has = VisitAs<CTextParm>(object, [&](CTextParm& parm) {
            access([&] { return parm.GetParmModifedLinkExp(); }, [&] { parm.SetParmModifedLinkExp(set); });
        });
        break;
    default:
        return NRV_E_ARGUMENT;
    }
    return has ? NRV_OK : NRV_E_KIND;
}

// ---- Parameters ----

CTextParm* ParmNamed(CNrvControl& control, LPCTSTR name) {
    const CDrawableArray& objects = *control.Document().GetDrawableObjs();
    for (INT_PTR i = 0; i < objects.GetSize(); ++i) {
        auto* parm = DYNAMIC_DOWNCAST(CTextParm, objects.GetAt(i));
        if (parm != nullptr && parm->GetParmName() == name) {
            return parm;
        }
    }
    return nullptr;
}

} // namespace

NrvResult NRV_CALL NrvGetInt(NrvHandle handle, NrvId id, int32_t what, int32_t* value) {
    return NrvObjectCall(handle, id, [&](CNrvControl& control, CDrawable& object) -> NrvResult {
        return value != nullptr ? AccessInt(control, object, what, value, 0, false)
                                : static_cast<NrvResult>(NRV_E_ARGUMENT);
    });
}

NrvResult NRV_CALL NrvSetInt(NrvHandle handle, NrvId id, int32_t what, int32_t value) {
    if (what == NRV_INT_SELECTED) {
        // The selection is no part of the drawing.
        return NrvObjectCall(handle, id, [&](CNrvControl& control, CDrawable& object) -> NrvResult {
            const NrvResult possible = AccessInt(control, object, what, nullptr, value, false);
            if (possible == NRV_OK) {
                AccessInt(control, object, what, nullptr, value, true);
                control.Repaint();
            }
            return possible;
        });
    }
    return NrvEditCall(handle, id, [&](CNrvControl& control, CDrawable& object, bool apply) -> NrvResult {
        return AccessInt(control, object, what, nullptr, value, apply);
    });
}

NrvResult NRV_CALL NrvGetDouble(NrvHandle handle, NrvId id, int32_t what, double* value) {
    return NrvObjectCall(handle, id, [&](CNrvControl&, CDrawable& object) -> NrvResult {
        return value != nullptr ? AccessDouble(object, what, value, 0.0, false)
                                : static_cast<NrvResult>(NRV_E_ARGUMENT);
    });
}

NrvResult NRV_CALL NrvSetDouble(NrvHandle handle, NrvId id, int32_t what, double value) {
    return NrvEditCall(handle, id, [&](CNrvControl&, CDrawable& object, bool apply) -> NrvResult {
        return AccessDouble(object, what, nullptr, value, apply);
    });
}

NrvResult NRV_CALL NrvGetString(NrvHandle handle, NrvId id, int32_t what, NrvChar* buffer, uint32_t capacity,
                                uint32_t* length) {
    return NrvObjectCall(handle, id, [&](CNrvControl&, CDrawable& object) -> NrvResult {
        CString text;
        const NrvResult found = AccessString(object, what, &text, nullptr, false);
        return found == NRV_OK ? NrvGive(text, buffer, capacity, length) : found;
    });
}

NrvResult NRV_CALL NrvSetString(NrvHandle handle, NrvId id, int32_t what, const NrvChar* value) {
    return NrvEditCall(handle, id, [&](CNrvControl&, CDrawable& object, bool apply) -> NrvResult {
        return value != nullptr ? AccessString(object, what, nullptr, value, apply)
                                : static_cast<NrvResult>(NRV_E_ARGUMENT);
    });
}

namespace {

// The tags of a segment; NRV_OK when it is there.
NrvResult SegmentTags(CDrawable& object, uint32_t segment, int32_t what, CString& name, CString& message) {
    auto* pline = dynamic_cast<CPLine*>(&object);
    if (pline == nullptr) {
        return NRV_E_KIND;
    }
    const bool valid = segment < static_cast<uint32_t>(pline->GetVertexCount()) &&
                       (what == NRV_STRING_NAME || what == NRV_STRING_MESSAGE);
    return valid && pline->GetSLineInfo(static_cast<int>(segment), name, message) != 0 ? NRV_OK : NRV_E_ARGUMENT;
}

} // namespace

NrvResult NRV_CALL NrvGetSegmentString(NrvHandle handle, NrvId id, uint32_t segment, int32_t what, NrvChar* buffer,
                                       uint32_t capacity, uint32_t* length) {
    return NrvObjectCall(handle, id, [&](CNrvControl&, CDrawable& object) -> NrvResult {
        CString name;
        CString message;
        const NrvResult found = SegmentTags(object, segment, what, name, message);
        return found == NRV_OK ? NrvGive(what == NRV_STRING_NAME ? name : message, buffer, capacity, length) : found;
    });
}

NrvResult NRV_CALL NrvSetSegmentString(NrvHandle handle, NrvId id, uint32_t segment, int32_t what,
                                       const NrvChar* value) {
    return NrvEditCall(handle, id, [&](CNrvControl&, CDrawable& object, bool apply) -> NrvResult {
        if (value == nullptr) {
            return NRV_E_ARGUMENT;
        }
        CString name;
        CString message;
        const NrvResult found = SegmentTags(object, segment, what, name, message);
        if (found == NRV_OK && apply) {
            (what == NRV_STRING_NAME ? name : message) = value;
            static_cast<CPLine&>(object).SetSLineInfo(static_cast<int>(segment), name, message);
        }
        return found;
    });
}

// ---- Parameters ----------------------------------------------------------------------------------------------------

NrvResult NRV_CALL NrvGetParmCount(NrvHandle handle, uint32_t* count) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (count == nullptr) {
            return NRV_E_ARGUMENT;
        }
        *count = 0;
        const CDrawableArray& objects = *control.Document().GetDrawableObjs();
        for (INT_PTR i = 0; i < objects.GetSize(); ++i) {
            *count += objects.GetAt(i)->IsKindOf(RUNTIME_CLASS(CTextParm)) ? 1 : 0;
        }
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvGetParm(NrvHandle handle, uint32_t index, NrvId* id) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        const CDrawableArray& objects = *control.Document().GetDrawableObjs();
        uint32_t before = 0;
        for (INT_PTR i = 0; id != nullptr && i < objects.GetSize(); ++i) {
            CDrawable* object = objects.GetAt(i);
            if (object->IsKindOf(RUNTIME_CLASS(CTextParm)) && before++ == index) {
                *id = control.Ids().IdOf(object);
                return NRV_OK;
            }
        }
        return NRV_E_ARGUMENT;
    });
}

NrvResult NRV_CALL NrvFindParm(NrvHandle handle, const NrvChar* name, NrvId* id) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (name == nullptr || id == nullptr) {
            return NRV_E_ARGUMENT;
        }
        CTextParm* parm = ParmNamed(control, name);
        if (parm == nullptr) {
            return NRV_E_WORD;
        }
        *id = control.Ids().IdOf(parm);
        return NRV_OK;
    });
}

NrvResult NRV_CALL NrvGetParmValue(NrvHandle handle, const NrvChar* name, NrvChar* buffer, uint32_t capacity,
                                   uint32_t* length) {
    return NrvCall(handle, [&](CNrvControl& control) -> NrvResult {
        if (name == nullptr) {
            return NRV_E_ARGUMENT;
        }
        CTextParm* parm = ParmNamed(control, name);
        return parm != nullptr ? NrvGive(parm->GetText(), buffer, capacity, length)
                               : static_cast<NrvResult>(NRV_E_WORD);
    });
}

NrvResult NRV_CALL NrvSetParmValue(NrvHandle handle, const NrvChar* name, const NrvChar* value) {
    NrvId id = 0;
    if (value == nullptr) {
        // After the checks of the handle, so that a wrong handle is reported first.
        return NrvCall(handle, [](CNrvControl&) -> NrvResult { return NRV_E_ARGUMENT; });
    }
    const NrvResult found = NrvFindParm(handle, name, &id);
    return found == NRV_OK ? NrvSetString(handle, id, NRV_STRING_TEXT, value) : found;
}

NrvResult NRV_CALL NrvGetShownText(NrvHandle handle, NrvId id, NrvChar* buffer, uint32_t capacity, uint32_t* length) {
    return NrvObjectCall(handle, id, [&](CNrvControl& control, CDrawable& object) -> NrvResult {
        auto* parm = dynamic_cast<CTextParm*>(&object);
        if (parm == nullptr) {
            return NRV_E_KIND;
        }
        CString value = parm->GetText();
        return NrvGive(control.Graphic().GetTextParm_ShowText(value), buffer, capacity, length);
    });
}
