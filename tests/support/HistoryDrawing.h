// A document with a history and no view, and objects to fill it with.
// Layer 16: tests.
#pragma once

#include "DrawingHistory.h"
#include "Line.h"
#include "MemoryInfo.h"
#include "support/TestData.h"

#include <functional>
#include <string>
#include <vector>

namespace HistoryTests {

inline int Registered() {
    return CKXMemoryManager::Instance()->GetCount();
}

template <class Object>
Object* Register(Object* object) {
    KX_ADD_MEMORY(object);
    return object;
}

inline void Free(CDrawable* object) {
    KX_REMOVE_MEMORY(object);
    delete object;
}

inline CLine* NewLine(double x = 0) {
    auto* line = Register(new CLine);
    line->SetStartPoint(CGePoint2d(x, 1));
    line->SetEndPoint(CGePoint2d(x + 2, 3));
    return line;
}

struct Listener : CDrawingHistoryListener {
    std::string told;
    std::function<void(CDrawingHistory*)> act;
    void OnHistoryChanged(CDrawingHistory* history, Change change) override {
        told += "MURFS"[change];
        if (act) {
            act(history);
        }
    }
};

struct Drawing : LoneDocument {
    Drawing() : history(&document) {}
    CLine* Add(double x = 0) {
        CLine* line = NewLine(x);
        document.AddDrawAobject(line);
        return line;
    }
    int Mark() { return history.Mark(L"步骤", L"Step"); }
    std::vector<CDrawable*> List() {
        std::vector<CDrawable*> list;
        for (INT_PTR i = 0; i < Objects().GetSize(); ++i) {
            list.push_back(Objects()[i]);
        }
        return list;
    }

    CDrawingHistory history;
};

using Pointers = std::vector<CDrawable*>;

inline double X(CDrawable* line) {
    return static_cast<CLine*>(line)->GetStartPoint().x;
}

} // namespace HistoryTests
