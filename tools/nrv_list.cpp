// nrv: the commands that print what a drawing holds, and the one that sets parameters. Layer 14: tools.

#include "nrv_commands.h"

#include "nrv_text.h"

#include <TextParm.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <map>

namespace {

using NrvText::AppendCsv;
using NrvText::AppendField;
using NrvText::AppendJson;
using NrvText::AppendNumber;

// Says on the standard error why a file isn't whole.
int Loaded(CNrvDrawing& drawing, const CString& file) {
    if (drawing.Load(file) == CNrvDrawing::Whole) {
        return kNrvDone;
    }
    NrvText::Complain(file, drawing.Reason());
    return kNrvFailed;
}

const char* StateWord(CNrvDrawing::State state) {
    return state == CNrvDrawing::Whole ? "whole" : state == CNrvDrawing::Damaged ? "damaged" : "unreadable";
}

// A member of a JSON object, with the comma before it where it isn't the first.
void Member(std::string& out, const char* name, bool first = false) {
    out += first ? "\"" : ", \"";
    out += name;
    out += "\": ";
}

CString Wide(const char* ascii) {
    return CString(ascii);
}

bool ExtentOf(CNrvDrawing& drawing, CDrawable* object, CGePoint2d& min, CGePoint2d& max) {
    CVectorViewCoordTran tran = drawing.Mapping();
    try {
        return object->GetRect(&tran, min, max) != 0;
    } catch (CException* e) {
        e->Delete(); // A polyline without vertices.
        return false;
    }
}

void AppendExtent(std::string& out, const CGePoint2d& min, const CGePoint2d& max) {
    out += '[';
    AppendJson(out, min.x);
    out += ", ";
    AppendJson(out, min.y);
    out += ", ";
    AppendJson(out, max.x);
    out += ", ";
    AppendJson(out, max.y);
    out += ']';
}

struct Facts {
    std::map<std::string, int> kinds;
    std::map<int, int> layers;
    int hidden = 0;
    bool extended = false;
    CGePoint2d min;
    CGePoint2d max;
};

// The extent is that of the objects with a finite one.
Facts FactsOf(CNrvDrawing& drawing) {
    Facts facts;
    CDrawableArray* objs = drawing.Document()->GetDrawableObjs();
    for (INT_PTR i = 0; i < objs->GetSize(); ++i) {
        CDrawable* object = objs->GetAt(i);
        ++facts.kinds[object->GetRuntimeClass()->m_lpszClassName];
        ++facts.layers[object->GetLayer()];
        facts.hidden += object->GetIsShow() == 0 || object->IsDelete() != 0 ? 1 : 0;
        CGePoint2d min;
        CGePoint2d max;
        if (!ExtentOf(drawing, object, min, max) || !std::isfinite(min.x) || !std::isfinite(min.y) ||
            !std::isfinite(max.x) || !std::isfinite(max.y)) {
            continue;
        }
        facts.min = facts.extended ? CGePoint2d(std::min(facts.min.x, min.x), std::min(facts.min.y, min.y)) : min;
        facts.max = facts.extended ? CGePoint2d(std::max(facts.max.x, max.x), std::max(facts.max.y, max.y)) : max;
        facts.extended = true;
    }
    return facts;
}

void AppendInfoJson(std::string& row, CNrvDrawing& drawing, const CString& file, const Facts& facts) {
    const CVectorViewCoordTran& view = drawing.Mapping();
    row += '{';
    Member(row, "file", true);
    AppendJson(row, file);
    Member(row, "state");
    AppendJson(row, Wide(StateWord(drawing.GetState())));
    Member(row, "damage");
    if (drawing.Reason().IsEmpty()) {
        row += "null";
    } else {
        AppendJson(row, drawing.Reason());
    }
    Member(row, "bytes");
    row += std::to_string(drawing.Bytes().size());
    Member(row, "version");
    row += std::to_string(kDocumentVersion);
    Member(row, "announced");
    row += std::to_string(drawing.Announced());
    Member(row, "objects");
    row += std::to_string(drawing.Kept());
    Member(row, "hidden");
    row += std::to_string(facts.hidden);
    Member(row, "kinds");
    row += '{';
    bool first = true;
    for (const auto& kind : facts.kinds) {
        Member(row, kind.first.c_str(), first);
        first = false;
        row += "{\"count\": " + std::to_string(kind.second) +
               ", \"schema\": " + std::to_string(drawing.SchemaOf(kind.first.c_str())) + "}";
    }
    row += '}';
    Member(row, "layers");
    row += '{';
    first = true;
    for (const auto& layer : facts.layers) {
        Member(row, std::to_string(layer.first).c_str(), first);
        first = false;
        row += std::to_string(layer.second);
    }
    row += '}';
    Member(row, "extents");
    if (facts.extended) {
        AppendExtent(row, facts.min, facts.max);
    } else {
        row += "null";
    }
    Member(row, "background");
    row += '"';
    NrvText::AppendColor(row, drawing.Document()->GetBKColor());
    row += '"';
    Member(row, "scale");
    if (std::isfinite(view.GetScale())) {
        AppendNumber(row, view.GetScale());
    } else {
        row += "null";
    }
    Member(row, "origin");
    row += '[';
    AppendJson(row, view.GetOriginX());
    row += ", ";
    AppendJson(row, view.GetOriginY());
    row += ']';
    Member(row, "height");
    row += std::to_string(view.GethScreen());
    row += '}';
}

void AppendInfoPlain(std::string& row, CNrvDrawing& drawing, const CString& file, const Facts& facts) {
    const CVectorViewCoordTran& view = drawing.Mapping();
    AppendField(row, file);
    row += "\n  state       ";
    row += StateWord(drawing.GetState());
    if (!drawing.Reason().IsEmpty()) {
        row += ": ";
        AppendField(row, drawing.Reason());
    }
    row += "\n  bytes       " + std::to_string(drawing.Bytes().size());
    row += "\n  version     " + std::to_string(kDocumentVersion);
    row += "\n  objects     " + std::to_string(drawing.Kept()) + " of " + std::to_string(drawing.Announced());
    if (facts.hidden > 0) {
        row += ", " + std::to_string(facts.hidden) + " hidden or deleted";
    }
    for (const auto& kind : facts.kinds) {
        row += "\n    " + kind.first + std::string(kind.first.size() < 16 ? 16 - kind.first.size() : 1, ' ') +
               std::to_string(kind.second) + ", schema " + std::to_string(drawing.SchemaOf(kind.first.c_str()));
    }
    row += "\n  layers      ";
    bool first = true;
    for (const auto& layer : facts.layers) {
        row += (first ? "" : ", ") + std::to_string(layer.first) + ": " + std::to_string(layer.second);
        first = false;
    }
    row += facts.layers.empty() ? "none" : "";
    row += "\n  extents     ";
    if (facts.extended) {
        const double numbers[] = {facts.min.x, facts.min.y, facts.max.x, facts.max.y};
        const char* const before[] = {"(", ", ", ") to (", ", "};
        for (int i = 0; i < 4; ++i) {
            row += before[i];
            AppendNumber(row, numbers[i]);
        }
        row += ')';
    } else {
        row += "none";
    }
    row += "\n  background  ";
    NrvText::AppendColor(row, drawing.Document()->GetBKColor());
    row += "\n  view        ";
    AppendNumber(row, view.GetScale());
    row += " units per pixel, origin (";
    AppendNumber(row, view.GetOriginX());
    row += ", ";
    AppendNumber(row, view.GetOriginY());
    row += "), height " + std::to_string(view.GethScreen()) + "\n";
}

// A property's value as JSON: a number, or a text.
void AppendValue(std::string& row, const COleVariant& value) {
    switch (value.vt) {
    case VT_I2:
        row += std::to_string(value.iVal);
        break;
    case VT_I4:
        row += std::to_string(value.lVal);
        break;
    case VT_R4:
        AppendJson(row, value.fltVal);
        break;
    case VT_R8:
        AppendJson(row, value.dblVal);
        break;
    case VT_BSTR:
        AppendJson(row, CString(value.bstrVal, static_cast<int>(::SysStringLen(value.bstrVal))));
        break;
    default:
        row += "null";
    }
}

void AppendProperties(std::string& row, CDrawable* object, bool json) {
    CDrawableProperty list;
    try {
        object->GetProperty(list);
    } catch (CException* e) {
        e->Delete(); // A polyline without vertices.
    }
    for (int i = 0; i < list.GetSize(); ++i) {
        const CSimpleProperty& property = *list.GetRow(i);
        if (json) {
            row += i == 0 ? "[" : ", [";
            AppendJson(row, property.GetKey());
            row += ", ";
            AppendJson(row, property.GetLabel());
            row += ", ";
            AppendValue(row, property.GetValue());
            row += ']';
        } else {
            row += '\t';
            AppendField(row, property.GetKey());
            row += '=';
            std::string value;
            const COleVariant given = property.GetValue();
            if (given.vt == VT_BSTR) {
                AppendField(value, CString(given.bstrVal, static_cast<int>(::SysStringLen(given.bstrVal))));
            } else {
                AppendValue(value, given);
            }
            row += value;
        }
    }
    list.Clear();
}

void AppendObject(std::string& row, CNrvDrawing& drawing, const NrvOptions& options, const CString& file,
                  INT_PTR index) {
    CDrawable* object = drawing.Document()->GetDrawableObjs()->GetAt(index);
    const char* kind = object->GetRuntimeClass()->m_lpszClassName;
    if (options.format != NrvFormat::Json) {
        if (options.withFile) {
            AppendField(row, file);
            row += '\t';
        }
        row += std::to_string(index) + "\t" + kind + "\t" + std::to_string(object->GetLayer());
        AppendProperties(row, object, false);
        row += '\n';
        return;
    }
    row += '{';
    Member(row, "file", true);
    AppendJson(row, file);
    Member(row, "index");
    row += std::to_string(index);
    Member(row, "kind");
    AppendJson(row, Wide(kind));
    Member(row, "name");
    AppendJson(row, object->GetName());
    Member(row, "layer");
    row += std::to_string(object->GetLayer());
    Member(row, "shown");
    row += object->GetIsShow() != 0 && object->IsDelete() == 0 ? "true" : "false";
    Member(row, "color");
    row += '"';
    NrvText::AppendColor(row, object->GetPenColor());
    row += '"';
    Member(row, "extents");
    CGePoint2d min;
    CGePoint2d max;
    if (ExtentOf(drawing, object, min, max)) {
        AppendExtent(row, min, max);
    } else {
        row += "null";
    }
    Member(row, "properties");
    row += '[';
    AppendProperties(row, object, true);
    row += "]}";
}

void AppendParm(std::string& row, const NrvOptions& options, const CString& file, CTextParm* parm) {
    const CGePoint2d pos = parm->GetPos();
    switch (options.format) {
    case NrvFormat::Json:
        row += "{\"file\": ";
        AppendJson(row, file);
        row += ", \"name\": ";
        AppendJson(row, parm->GetParmName());
        row += ", \"text\": ";
        AppendJson(row, parm->GetText());
        row += ", \"type\": " + std::to_string(parm->GetParmType());
        row += ", \"expression\": ";
        AppendJson(row, parm->GetParmRegularExp());
        row += ", \"description\": ";
        AppendJson(row, parm->GetParmDes());
        row += ", \"position\": [";
        AppendJson(row, pos.x);
        row += ", ";
        AppendJson(row, pos.y);
        row += "]}";
        break;
    case NrvFormat::Csv:
        AppendCsv(row, file);
        for (const CString& text : {parm->GetParmName(), parm->GetText()}) {
            row += ',';
            AppendCsv(row, text);
        }
        row += ',' + std::to_string(parm->GetParmType());
        for (const CString& text : {parm->GetParmRegularExp(), parm->GetParmDes()}) {
            row += ',';
            AppendCsv(row, text);
        }
        row += ',';
        AppendNumber(row, pos.x);
        row += ',';
        AppendNumber(row, pos.y);
        row += '\n';
        break;
    case NrvFormat::Plain:
        if (options.withFile) {
            AppendField(row, file);
            row += '\t';
        }
        AppendField(row, parm->GetParmName());
        row += '\t';
        AppendField(row, parm->GetText());
        row += '\n';
    }
}

template <class Take>
void ForEachParm(CNrvDrawing& drawing, Take take) {
    CDrawableArray* objs = drawing.Document()->GetDrawableObjs();
    for (INT_PTR i = 0; i < objs->GetSize(); ++i) {
        if (auto* parm = DYNAMIC_DOWNCAST(CTextParm, objs->GetAt(i))) {
            take(parm);
        }
    }
}

} // namespace

int NrvInfo(const NrvOptions& options, const CString& file, CNrvPrinter& printer) {
    CNrvDrawing drawing;
    const int code = Loaded(drawing, file);
    if (drawing.GetState() == CNrvDrawing::Unreadable) {
        return code;
    }
    std::string row;
    const Facts facts = FactsOf(drawing);
    if (options.format == NrvFormat::Json) {
        AppendInfoJson(row, drawing, file, facts);
    } else {
        AppendInfoPlain(row, drawing, file, facts);
    }
    printer.Row(row);
    return code;
}

int NrvList(const NrvOptions& options, const CString& file, CNrvPrinter& printer) {
    CNrvDrawing drawing;
    const int code = Loaded(drawing, file);
    for (INT_PTR i = 0; i < drawing.Document()->GetDrawableObjs()->GetSize(); ++i) {
        std::string row;
        AppendObject(row, drawing, options, file, i);
        printer.Row(row);
    }
    return code;
}

int NrvParams(const NrvOptions& options, const CString& file, CNrvPrinter& printer) {
    CNrvDrawing drawing;
    const int code = Loaded(drawing, file);
    ForEachParm(drawing, [&](CTextParm* parm) {
        std::string row;
        AppendParm(row, options, file, parm);
        printer.Row(row);
    });
    return code;
}

int NrvCheck(const NrvOptions& options, const CString& file, CNrvPrinter& printer) {
    CNrvDrawing drawing;
    const CNrvDrawing::State state = drawing.Load(file);
    const int lost = std::max(0, drawing.Announced() - drawing.Kept());
    std::string row;
    if (options.format == NrvFormat::Json) {
        row += '{';
        Member(row, "file", true);
        AppendJson(row, file);
        Member(row, "state");
        AppendJson(row, Wide(StateWord(state)));
        Member(row, "objects");
        row += std::to_string(drawing.Kept());
        Member(row, "lost");
        row += std::to_string(lost);
        Member(row, "damage");
        if (drawing.Reason().IsEmpty()) {
            row += "null";
        } else {
            AppendJson(row, drawing.Reason());
        }
        row += '}';
    } else {
        AppendField(row, file);
        row += std::string("\t") + StateWord(state) + "\t" + std::to_string(drawing.Kept()) + " objects\t" +
               std::to_string(lost) + " lost\n";
    }
    printer.Row(row);
    if (state != CNrvDrawing::Whole) {
        NrvText::Complain(file, drawing.Reason());
    }
    return state == CNrvDrawing::Whole ? kNrvDone : state == CNrvDrawing::Damaged ? kNrvPartLost : kNrvUnreadable;
}

int NrvSet(const NrvOptions& options, const CString& file, CNrvPrinter&) {
    CNrvDrawing drawing;
    if (const int code = Loaded(drawing, file)) {
        return code; // A damaged drawing saved again would lose the rest for good.
    }
    int code = kNrvDone;
    for (const auto& value : options.values) {
        bool found = false;
        ForEachParm(drawing, [&](CTextParm* parm) {
            if (parm->GetParmName() == value.first) {
                parm->SetText(value.second);
                found = true;
            }
        });
        if (!found) {
            NrvText::Complain(file, L"has no parameter named " + value.first);
            code = kNrvFailed;
        }
    }
    if (code != kNrvDone) {
        return code;
    }
    CMemFile stream;
    CString reason;
    try {
        drawing.Document()->StoreToMemFile(&stream);
    } catch (CException* e) {
        e->Delete();
        reason = L"cannot be stored";
    }
    std::vector<BYTE> bytes(static_cast<size_t>(stream.GetLength()));
    stream.SeekToBegin();
    stream.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    if (!reason.IsEmpty() || !NrvWriteFile(options.output, bytes.data(), bytes.size(), reason)) {
        NrvText::Complain(options.output, reason);
        return kNrvFailed;
    }
    return kNrvDone;
}
