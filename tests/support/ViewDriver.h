// Drives the commands of a view by pixel events and gives the state after each: results, document, band, marker.
// Layer 16: tests.
#pragma once

#include "CommandOperationManager.h"
#include "Line.h"
#include "PLine.h"
#include "support/BoxAnswer.h"
#include "support/ViewHost.h"

#include <functional>
#include <string>
#include <vector>

// Wraps the running tool and writes down the results of its handlers.
class SpyTool;

// A view of 400 by 300 pixels at scale 1 with an empty drawing: the drawing point (x, y) is on pixel (x, 300 - y).
// The points that the events take are drawing points, for readable figures, and are sent as their pixels.
class ViewDriver : public ViewHost {
public:
    ViewDriver();
    explicit ViewDriver(CSize client);
    ~ViewDriver();

    // ---- Events ----

    // Starts a command by its word, through the view, and watches what runs afterwards.
    void Start(LPCTSTR word);
    void MoveTo(double x, double y, UINT flags = 0);
    // A press alone, and the pair of press and release.
    void PressAt(double x, double y);
    void ClickAt(double x, double y);
    void RightAt(double x, double y);
    void Wheel(int delta, double x, double y);
    // The pan with the middle button: pressed at one point and moved to the other.
    void MiddleDrag(double x1, double y1, double x2, double y2);

    // ---- The state ----

    CCommandOperationManager& Manager();
    // The running tool itself, not its watcher; null when none runs.
    CCommandOperation* Tool();
    bool IsRunning();
    // The name of its class, or "".
    std::string ToolName();
    // The results of its handlers since the last call, such as "down 0, move 0".
    std::string TakeResults();
    CDrawable* Object(INT_PTR i) { return Objects()[i]; }
    INT_PTR Count() { return Objects().GetSize(); }
    CDrawableArray& Selected() { return *Document().GetSelectedDrawableObjs(); }
    int ClickCount();
    int Step();

    bool IsBandDrawn();
    CPoint BandStart();
    CPoint BandEnd();
    int BandPenStyle();
    bool IsMarkDrawn();
    CGePoint2d Mark();
    CGePoint2d LastPoint();
    std::vector<CGePoint2d> Tracked();
    INT_PTR AssistantEnds();
    // The edit box of the running tool: null while hidden.
    HWND EditBox();
    std::string EditText();
    void TypeInEdit(LPCTSTR text);

    // ---- Filling ----

    CLine* AddLine(double x1, double y1, double x2, double y2);
    CPLine* AddPolyline(const std::vector<CGePoint2d>& points, bool closed = false);
    void Select(CDrawable* object);
    // All objects of the drawing in words, from the bottom, joined by "; ".
    std::string AllWords();
    // The drawing as a stream.
    std::vector<BYTE> Store();

    CPoint PixelOf(double x, double y);
    // Pixels that differ from a fresh paint, which is made by the call, apart from the edit box.
    int DifferenceFromFresh();
    // Pixels that differ from another view of the same size, but for the other's edit box, whose caret blinks.
    int DifferenceBesideEditBox(ViewDriver& other);

private:
    friend class SpyTool;
    void Watch();
    // In client pixels; empty while hidden.
    CRect EditBoxPlace();
    std::vector<std::string> m_results;
};

// An object in words: "line (1,2)-(3,4) normal 137", "pline (0,0) (5,0) selected -2", "circle (1,2) r 3 normal 137",
// "arc (0,0) r 1 from 0 to 3.14159 normal 137", "text (1,2) abc normal 137"; figures with six digits, then the draw
// state and the pen colour index.
std::string Words(CDrawable* object);

// Runs the given steps, in order, one on each dialog that opens on this thread, as soon as it shows.
class DialogScript {
public:
    using Step = std::function<void(HWND dialog)>;
    explicit DialogScript(std::vector<Step> steps);
    // And one more step for every further dialog.
    DialogScript(std::vector<Step> steps, Step further);
    ~DialogScript();
    DialogScript(const DialogScript&) = delete;
    DialogScript& operator=(const DialogScript&) = delete;
    size_t Seen() const { return m_count; }

    // Steps: put a text into a control and press a button, or press the button alone.
    static Step Answer(int button);
    static Step TypeAndAnswer(int control, std::wstring text, int button);

private:
    static LRESULT CALLBACK Hook(int code, WPARAM wParam, LPARAM lParam);
    bool Notice(HWND dialog);

    std::vector<Step> m_steps;
    Step m_further;
    std::vector<HWND> m_answered; // Emptied of destroyed dialogs, whose handles are used again.
    size_t m_count = 0;
    HHOOK m_hook;
    static DialogScript* s_current;
};
