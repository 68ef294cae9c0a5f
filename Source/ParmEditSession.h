// CParmEditSession: the one edit of a parameter view: its parameter, its phase, and whether it still is the same edit
// after foreign code has run.
// Layer 11: views and dialogs.
#pragma once

#include <KxAlive.h>

#include <optional>

class CTextParm;
class CVectorGraphic;

// A parameter text, and the view that works on it, watched across a call that runs foreign code (a hook, a
// notification, a message, a modal box).
class CWatchedParm {
public:
    // `parm` is not null. `graphic` is that of the view.
    CWatchedParm(CTextParm* parm, const CKxAlive& view, CVectorGraphic* graphic);
    // Asked right after the call. True when the view or its window has ended, when the parameter was freed, and when it
    // has left the drawing in which it was seen. A parameter that the host keeps outside of the drawing counts as
    // having left only after it was seen in the drawing.
    bool HasGone();
    // Whether the object itself still exists.
    bool IsParmAlive() const { return m_ParmAlive.IsAlive(); }

private:
    bool IsListed() const;

    CTextParm* m_pParm;
    CKxAliveToken m_ParmAlive;
    CKxAliveToken m_ViewAlive;
    CVectorGraphic* m_pGraphic;
    bool m_bListed;
};

// A view has one session, which serves all its edits, one after the other. Its phases:
//
//   Phase     | What runs            | An end asked for | Another edit opened     | ResetVectorView
//   ----------|----------------------|------------------|-------------------------|--------------------------------
//   Closed    | nothing              | nothing          | -> Open                 | nothing
//   Open      | nothing              | -> Accepting     | asks for this end first | -> Ending, -> Closed
//   Accepting | OnAcceptEditData     | nothing          | takes its place         | -> Ending, -> Closed
//   Refused   | nothing              | -> Accepting     | asks for this end first | -> Ending, -> Closed
//   Storing   | OnEditChanging, the  | nothing          | takes its place         | -> Ending, -> Closed
//             | store, OnEditChanged |                  |                         |
//   Ending    | OnEndEdit            | nothing          | takes its place         | -> Closed, without a second call
//
// An end runs Accepting, Storing, Ending, Closed; it stops in Refused when OnAcceptEditData gives 0. An edit that is
// still refused when another one opens loses its place to it, unless refusals are strict: then the other doesn't open.
// While a hook runs the phase is that of the hook, also when the hook closes the edit or opens another one.
class CParmEditSession {
public:
    // See the table above.
    enum class Phase { Closed, Open, Refused, Accepting, Storing, Ending };

    Phase GetPhase() const; // That of the hook, while one runs.
    // Another number for each edit of the view, which distinguishes the one that ends from one that a hook has opened.
    unsigned int GetNumber() const { return m_Number; }
    bool IsOpen(unsigned int number) const { return m_Parm.has_value() && m_Number == number; } // Of that number.
    // See CWatchedParm; both false while no edit is open.
    bool HasParmGone() { return m_Parm.has_value() && m_Parm->HasGone(); }
    bool IsParmAlive() const { return m_Parm.has_value() && m_Parm->IsParmAlive(); }

    void Open(const CWatchedParm& parm); // An edit of a new number, not refused.
    void Close();                        // No edit is open; no hook is called.
    // For a view or a window that ends: closed, and in no hook any more.
    void Abandon();
    // Whether the text of the open edit has been refused.
    void SetRefused(bool refused) { m_bRefused = refused; }

    // Runs a hook in its phase. False when the view, or its window, has ended meanwhile: the view must then not be
    // used, nor this object.
    template <class Call>
    bool RunHook(Phase phase, const CKxAlive& view, Call call) {
        const HookScope scope(*this, view, phase);
        call();
        return scope.alive.IsAlive();
    }

private:
    // Also when the hook throws.
    struct HookScope {
        HookScope(CParmEditSession& owner, const CKxAlive& view, Phase phase)
            : session(owner), alive(view), outer(owner.m_Hook) {
            session.m_Hook = phase;
        }
        ~HookScope() {
            if (alive.IsAlive()) {
                session.m_Hook = outer;
            }
        }
        CParmEditSession& session;
        CKxAliveToken alive;
        Phase outer;
    };

    std::optional<CWatchedParm> m_Parm;
    unsigned int m_Number = 0;
    Phase m_Hook = Phase::Closed; // Accepting, Storing or Ending while a hook runs.
    bool m_bRefused = false;
};
