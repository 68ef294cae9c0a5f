// COperationHost: what a tool asks of the window that it works in, beyond what every window can do.
// Layer 9: command operations. The view implements it.
#pragma once

class CCommandOperation;
class CDrawable;
class CGePoint2d;

// A second base of a window class, next to CWnd: a tool finds it in the window that it was built with. Without one a
// tool works alone: no rubber band, no ortho lock, no tracked grips, no property dialog.
class COperationHost {
public:
    // The engine that runs the tools of this window, whose rubber band they share; null while there is none.
    virtual CCommandOperation* OperationEngine() = 0;
    // Whether the engine's ortho lock is on.
    virtual bool IsOperationOrtho() = 0;
    // Adds a grip to those that the engine tracks.
    virtual void TrackOperationGrip(const CGePoint2d& point) = 0;
    // Ends the engine's running tool as if it had done its work. The tool stays allocated until the outermost event of
    // the engine is over.
    virtual void EndOperation() = 0;
    // Shows the object in the property dialog, where there is one; null empties the dialog.
    virtual void ShowOperationObject(CDrawable* object) = 0;
    // Called when no event of the engine is running any more, and the last one may have changed the drawing or the
    // selection. The names are those of the tool that ended in it, in Chinese and English; null when none ended, or one
    // without a word. A tool may be running. Must not throw.
    virtual void OnEngineAtRest(const wchar_t* /*chinese*/, const wchar_t* /*english*/) {}

protected:
    COperationHost() = default;
    ~COperationHost() = default;
};
