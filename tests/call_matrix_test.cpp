// Every public call of view, document and engine in every state of every command: no fault, nothing left allocated.

#include "CommandOperationManager.h"
#include "Document.h"
#include "DrawingHistory.h"
#include "MemoryInfo.h"
#include "support/BoxAnswer.h"
#include "support/CallMatrix.h"

#include <gtest/gtest.h>

namespace {

std::unique_ptr<CallHost> MakeHost() {
    return std::make_unique<CallHostOf<CVectorView>>();
}

void SelectAll(CallHost& h) {
    CDrawableArray& objects = *h.Document().GetDrawableObjs();
    for (INT_PTR i = 0; i < objects.GetSize(); ++i) {
        h.Document().AddSelected(objects[i]);
    }
}

// The state after the first `steps` events of a script: m a move, c a click, t a typed distance, x Execute; each move
// and click at the next of the points.
void Drive(CallHost& h, const std::string& script, size_t steps) {
    const CGePoint2d points[] = {{100, 200}, {140, 200}, {180, 230}, {200, 250}, {90, 240}, {120, 120}};
    size_t next = 0;
    for (size_t i = 0; i < steps; ++i) {
        const CGePoint2d& p = points[next % std::size(points)];
        switch (script[i]) {
        case 'm':
            h.MoveTo(p.x, p.y);
            ++next;
            break;
        case 'c':
            h.ClickAt(p.x, p.y);
            ++next;
            break;
        case 't':
            h.Manager().SetInEdit(1);
            break;
        default:
            h.Manager().Execute();
            break;
        }
    }
}

struct Command {
    LPCTSTR word;
    const char* script;
};

// Each script leads through all states of its command and stops before the event that ends it.
constexpr Command kCommands[] = {
    {L"line", "mcm"},        {L"rect", "mcm"},           {L"pline", "mcmtxmcm"},
    {L"pline_bound", "mcx"}, {L"circle", "mcm"},         {L"arc", "mcmcm"},
    {L"DrawLabel", "mcmcm"}, {L"DrawLabel_Green", "mc"}, {L"offset", "mcmt"},
    {L"text", "m"},          {L"textparm", "m"},         {L"translation", "mcm"},
    {L"rotation", "mcm"},    {L"mirroring", "mcm"},      {L"copy", "mcm"},
    {L"viewmove", "mcm"},    {L"PLine_AddPoint", "mc"},  {L"PLine_RemovePoint", "mc"},
};

// The grip at (50, 50) of the selected first line.
void TakeGrip(CallHost& h) {
    h.Document().AddSelected(h.Document().GetDrawableObjs()->GetAt(0));
    h.ClickAt(50, 50);
}

std::vector<CallState> StatesBetweenEvents() {
    std::vector<CallState> states = {
        {"no command", [](CallHost&) {}},
        {"a selection", [](CallHost& h) { h.ClickAt(150, 100); }},
        {"all selected, property dialog", [](CallHost& h) { SelectAll(h), h.GivePropertyDialog(); }},
        {"grip taken", TakeGrip},
        {"grip moved", [](CallHost& h) { TakeGrip(h), h.MoveTo(90, 40); }},
        {"grip, distance being typed", [](CallHost& h) { TakeGrip(h), h.MoveTo(90, 40), h.Manager().SetInEdit(1); }},
        {"grip, its object erased",
         [](CallHost& h) {
             TakeGrip(h);
             h.mayStay.push_back(h.Document().GetSelectedDrawableObjs()->GetAt(0));
             h.Document().DeleteAllSelectedObject();
         }},
    };
    for (const Command& command : kCommands) {
        for (size_t steps = 0; steps <= std::string(command.script).size(); ++steps) {
            for (bool selected : {false, true}) {
                const bool transforms =
                    std::wstring(L"translation rotation mirroring copy").find(command.word) != std::wstring::npos;
                if (selected && !transforms) {
                    continue;
                }
                states.push_back({Utf8(command.word) + " after " + std::string(command.script, steps) +
                                      (selected ? ", all selected" : ""),
                                  [=](CallHost& h) {
                                      if (selected) {
                                          SelectAll(h);
                                      }
                                      h.view->DoCommand(command.word);
                                      Drive(h, command.script, steps);
                                  }});
            }
        }
    }
    return states;
}

// The events in which a command runs code of the host: it moves its edit box, or asks.
std::vector<CallState> StatesInsideEvents() {
    const auto move = [](CallHost& h) { h.MoveTo(150, 230); };
    const auto click = [](CallHost& h) { h.ClickAt(150, 230); };
    const auto start = [](LPCTSTR word, const char* script, bool selected) {
        return [=](CallHost& h) {
            if (selected) {
                SelectAll(h);
            }
            h.view->DoCommand(word);
            Drive(h, script, std::string(script).size());
        };
    };
    return {
        {"grip: its edit box is placed", TakeGrip, move},
        {"grip: its edit box is placed again", [=](CallHost& h) { TakeGrip(h), h.MoveTo(90, 40); }, move},
        {"offset: its edit box is placed", start(L"offset", "mc", false), move},
        {"pline: its edit box is placed", start(L"pline", "mc", false), move},
        {"pline: a typed length", start(L"pline", "mcm", false), [](CallHost& h) { h.Manager().Execute(); }},
        {"translation: the question", start(L"translation", "mcm", true), click},
        {"rotation: the question", start(L"rotation", "mcm", true), click},
        {"mirroring: the question", start(L"mirroring", "mcm", true), click},
        {"text: the dialog", start(L"text", "m", false), click},
        {"textparm: the dialog", start(L"textparm", "m", false), click},
        {"erase: the question",
         [](CallHost& h) {
             SelectAll(h);
             CDrawableArray& selected = *h.Document().GetSelectedDrawableObjs();
             for (INT_PTR i = 0; i < selected.GetSize(); ++i) {
                 h.mayStay.push_back(selected[i]);
             }
         },
         [](CallHost& h) { h.view->DoCommand(L"erase"); }},
        {"rotatetext: the dialog", [](CallHost& h) { h.staysMore = 1; }, // Its tool stays allocated.
         [](CallHost& h) { h.view->DoCommand(L"rotatetext"); }},
    };
}

// The states with the history of the view switched on, and a step to be undone.
std::vector<CallState> WithHistory(std::vector<CallState> states) {
    for (CallState& state : states) {
        state.enter = [enter = state.enter](CallHost& h) {
            h.view->EnableHistory(1);
            h.view->AddLine(CGePoint2d(300, 200), CGePoint2d(350, 200), Gdiplus::Color(255, 1, 2, 3), 1);
            enter(h);
        };
    }
    return states;
}

std::vector<CallRow> HistoryCalls() {
    return {
        {"Undo", [](CallHost& h) { h.view->Undo(); }},
        {"Undo, Undo, Redo",
         [](CallHost& h) {
             h.view->Undo();
             h.view->Undo();
             h.view->Redo();
         }},
        {"Mark", [](CallHost& h) { h.view->GetHistory()->Mark(); }},
        {"AddLine",
         [](CallHost& h) { h.view->AddLine(CGePoint2d(1, 2), CGePoint2d(3, 4), Gdiplus::Color(255, 1, 2, 3), 1); }},
        {"EnableHistory(0)", [](CallHost& h) { h.view->EnableHistory(0); }},
        {"Reset",
         [](CallHost& h) {
             h.Document().Reset();
             h.view->Undo();
         }},
        {"SetDocument",
         [](CallHost& h) {
             h.ReplaceDocument(new CGraphicDocument, 0);
             KX_ADD_MEMORY(&h.Document());
             h.view->Undo();
         }},
        {"view freed", [](CallHost& h) { h.FreeView(); }},
    };
}

} // namespace

TEST(CallMatrix, NoCallOfTheHistoryBetweenTwoEventsFaultsOrLeaks) {
    RunCallMatrix("history, between two events", WithHistory(StatesBetweenEvents()), HistoryCalls(), MakeHost);
}

TEST(CallMatrix, NoCallOfTheHistoryInsideAnEventFaultsOrLeaks) {
    RunCallMatrix("history, inside an event", WithHistory(StatesInsideEvents()), HistoryCalls(), MakeHost);
}

TEST(CallMatrix, NoPublicCallBetweenTwoEventsFaultsOrLeaks) {
    RunCallMatrix("between two events", StatesBetweenEvents(), PublicCalls(), MakeHost);
}

TEST(CallMatrix, NoPublicCallInsideAnEventFaultsOrLeaks) {
    RunCallMatrix("inside an event", StatesInsideEvents(), PublicCalls(), MakeHost);
}
