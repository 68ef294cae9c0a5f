#include "DrawingHistory.h"

#include "Document.h"
#include "HistoryBaseline.h"

#include <algorithm>
#include <utility>

namespace {

constexpr wchar_t kAnyChinese[] = L"编辑";
constexpr wchar_t kAnyEnglish[] = L"Edit";

// Runs what may fail for lack of memory, or in an object of a host. False when it did.
template <class Call>
bool Attempt(Call call) {
    try {
        call();
        return true;
    } catch (CException* e) {
        e->Delete();
    } catch (...) {
    }
    return false;
}

// The patch to what the drawing is now; null when nothing has changed. `object`: all that was `added`, or else changed;
// null when nothing is known. `compared`: whether all of the drawing was.
std::unique_ptr<CHistoryPatch> MakePatch(CHistoryBaseline& baseline, CDrawable* object, bool added, bool& compared) {
    std::unique_ptr<CHistoryPatch> patch;
    compared = false;
    if (object != nullptr && added) {
        patch = baseline.AdvanceAdded(object);
    }
    if (patch == nullptr && (object == nullptr || added || !baseline.AdvanceChanged(object, patch))) {
        compared = true;
        patch = baseline.Advance();
    }
    return patch;
}

// True for the length of a block.
class CBusyScope {
public:
    explicit CBusyScope(bool& busy) : m_bBusy(busy), m_bBefore(busy) { m_bBusy = true; }
    ~CBusyScope() { m_bBusy = m_bBefore; }
    CBusyScope(const CBusyScope&) = delete;
    CBusyScope& operator=(const CBusyScope&) = delete;

private:
    bool& m_bBusy;
    bool m_bBefore;
};

} // namespace

CDrawingHistory::CDrawingHistory(CGraphicDocument* document) {
    Attach(document);
}

CDrawingHistory::~CDrawingHistory() {
    m_pListener = nullptr;
    Attach(nullptr);
}

void CDrawingHistory::Attach(CGraphicDocument* document) {
    if (m_pDocument != nullptr) {
        Clear();
        m_pDocument->m_pHistory = nullptr;
        m_pDocument = nullptr;
    }
    if (document != nullptr) {
        if (document->m_pHistory != nullptr) {
            document->m_pHistory->Attach(nullptr);
        }
        m_pDocument = document;
        document->m_pHistory = this;
        Restart();
    }
}

void CDrawingHistory::Clear() {
    const CBusyScope busy(m_bBusy); // A host's destructors may call this history.
    m_Forgotten.swap(m_Steps);
    m_Position = 0;
    m_Clean = -1;
    m_Bytes = 0;
    DropForgotten(false);
    m_Baseline.reset();
}

void CDrawingHistory::Restart() {
    if (m_pDocument == nullptr || m_bBusy) {
        return;
    }
    {
        const CBusyScope busy(m_bBusy);
        Clear();
        Attempt([&] {
            auto baseline = std::make_unique<CHistoryBaseline>(*m_pDocument);
            if (const std::unique_ptr<CHistoryPatch> first = baseline->Advance()) {
                baseline->Drop(*first);
            }
            m_Baseline = std::move(baseline);
        });
        m_Clean = m_pDocument->IsModified() ? -1 : 0;
    }
    Tell(CDrawingHistoryListener::Forgotten);
}

void CDrawingHistory::EndLoad() {
    m_bBusy = false;
    Restart();
}

// ---- Marking -------------------------------------------------------------------------------------------------------

bool CDrawingHistory::Advance(CDrawable* object, bool added, LPCTSTR chinese, LPCTSTR english, bool& recorded) {
    recorded = false;
    if (m_Baseline == nullptr) {
        Restart();
        return m_Baseline != nullptr;
    }
    bool trimmed = false;
    {
        const CBusyScope busy(m_bBusy);
        bool compared = false;
        const bool done = Attempt([&] {
            // All memory is allocated first: after the comparison the step must not get lost.
            auto step = std::make_unique<Step>();
            step->chinese = chinese != nullptr ? chinese : kAnyChinese;
            step->english = english != nullptr ? english : kAnyEnglish;
            if (m_Steps.size() == m_Steps.capacity()) {
                m_Steps.reserve(m_Steps.size() * 2 + 8);
            }
            m_Forgotten.reserve(m_Steps.capacity());
            step->patch = MakePatch(*m_Baseline, object, added, compared);
            if (step->patch == nullptr) {
                return;
            }
            recorded = true;
            for (size_t i = static_cast<size_t>(m_Position); i < m_Steps.size(); ++i) {
                m_Bytes -= m_Steps[i]->bytes;
                m_Forgotten.push_back(std::move(m_Steps[i]));
            }
            m_Steps.resize(static_cast<size_t>(m_Position));
            m_Clean = m_Clean > m_Position ? -1 : m_Clean;
            step->bytes = step->patch->Bytes();
            m_Bytes += step->bytes;
            m_Steps.push_back(std::move(step));
            ++m_Position;
            const size_t before = m_Forgotten.size();
            Trim();
            trimmed = m_Forgotten.size() != before;
        });
        if (!done) {
            return false;
        }
        if (recorded) {
            SetModified(TRUE);
        }
        DropForgotten(compared);
    }
    const CKxAliveToken alive(m_Alive);
    if (recorded) {
        Tell(CDrawingHistoryListener::Marked);
    }
    if (trimmed && alive.IsAlive()) {
        Tell(CDrawingHistoryListener::Forgotten);
    }
    return true;
}

int CDrawingHistory::Mark(LPCTSTR chinese, LPCTSTR english) {
    return MarkKnown(nullptr, false, chinese, english);
}

int CDrawingHistory::MarkAdded(CDrawable* object, LPCTSTR chinese, LPCTSTR english) {
    return MarkKnown(object, true, chinese, english);
}

int CDrawingHistory::MarkChanged(CDrawable* object, LPCTSTR chinese, LPCTSTR english) {
    return MarkKnown(object, false, chinese, english);
}

int CDrawingHistory::MarkKnown(CDrawable* object, bool added, LPCTSTR chinese, LPCTSTR english) {
    if (m_pDocument == nullptr || m_bBusy || m_Group != 0 || IsQuiet() == 0) {
        return 0;
    }
    bool recorded = false;
    Advance(object, added, chinese, english, recorded);
    return recorded;
}

void CDrawingHistory::BeginGroup(LPCTSTR chinese, LPCTSTR english) {
    if (m_Group == 0) {
        Mark();
        m_GroupChinese.Empty();
        m_GroupEnglish.Empty();
        Attempt([&] {
            m_GroupChinese = chinese != nullptr ? chinese : kAnyChinese;
            m_GroupEnglish = english != nullptr ? english : kAnyEnglish;
        });
    }
    ++m_Group;
}

int CDrawingHistory::EndGroup() {
    if (m_Group == 0 || --m_Group != 0) {
        return 0;
    }
    const CString chinese = m_GroupChinese;
    const CString english = m_GroupEnglish;
    return Mark(chinese, english);
}

// ---- Undo and redo -------------------------------------------------------------------------------------------------

int CDrawingHistory::Undo() {
    return Travel(true);
}

int CDrawingHistory::Redo() {
    return Travel(false);
}

int CDrawingHistory::Travel(bool back) {
    if (m_pDocument == nullptr || m_bBusy || m_Group != 0) {
        return 0;
    }
    const CKxAliveToken alive(m_Alive);
    if (OnBeforeTravel() == 0 || !alive.IsAlive() || m_pDocument == nullptr || m_bBusy || m_Group != 0) {
        return 0;
    }
    bool recorded = false;
    if (IsQuiet() == 0 || !Advance(nullptr, false, nullptr, nullptr, recorded) || !alive.IsAlive() || m_Group != 0 ||
        m_Baseline == nullptr) {
        return 0;
    }
    if (back ? m_Position == 0 : m_Position == static_cast<int>(m_Steps.size())) {
        return 0;
    }
    {
        const CBusyScope busy(m_bBusy);
        Step& step = *m_Steps[static_cast<size_t>(back ? m_Position - 1 : m_Position)];
        if (!m_Baseline->Toggle(*step.patch)) {
            return 0;
        }
        m_Position += back ? -1 : 1;
        m_Bytes -= step.bytes;
        step.bytes = step.patch->Bytes();
        m_Bytes += step.bytes;
        SetModified(m_Position != m_Clean);
    }
    Tell(back ? CDrawingHistoryListener::Undone : CDrawingHistoryListener::Redone);
    return 1;
}

CString CDrawingHistory::NameOf(int step, int english) const {
    if (step < 0 || step >= static_cast<int>(m_Steps.size())) {
        return CString();
    }
    const Step& named = *m_Steps[static_cast<size_t>(step)];
    return english != 0 ? named.english : named.chinese;
}

CString CDrawingHistory::GetUndoName(int english) const {
    return NameOf(m_Position - 1, english);
}

CString CDrawingHistory::GetRedoName(int english) const {
    return NameOf(m_Position, english);
}

// ---- The clean point -----------------------------------------------------------------------------------------------

void CDrawingHistory::SetClean() {
    if (m_pDocument == nullptr || m_bBusy) {
        return;
    }
    const CKxAliveToken alive(m_Alive);
    bool recorded = false;
    if (m_Group != 0 || IsQuiet() == 0) {
        // In the middle of a change there is no state to return to.
        m_Clean = -1;
        return;
    }
    const bool marked = Advance(nullptr, false, nullptr, nullptr, recorded);
    if (!alive.IsAlive()) {
        return;
    }
    m_Clean = marked ? m_Position : -1;
    if (recorded) {
        const CBusyScope busy(m_bBusy);
        SetModified(FALSE); // Advance has set the flag.
    }
    Tell(CDrawingHistoryListener::Saved);
}

// ---- Limits --------------------------------------------------------------------------------------------------------

void CDrawingHistory::Trim() {
    size_t surplus = 0;
    while (static_cast<int>(surplus) < m_Position - 1 &&
           (m_Bytes > m_MostBytes || static_cast<int>(m_Steps.size() - surplus) > m_MostSteps)) {
        m_Bytes -= m_Steps[surplus]->bytes;
        m_Forgotten.push_back(std::move(m_Steps[surplus]));
        ++surplus;
    }
    m_Steps.erase(m_Steps.begin(), m_Steps.begin() + static_cast<std::ptrdiff_t>(surplus));
    m_Position -= static_cast<int>(surplus);
    m_Clean = m_Clean >= static_cast<int>(surplus) ? m_Clean - static_cast<int>(surplus) : -1;
}

void CDrawingHistory::SetLimits(size_t bytes, int steps) {
    m_MostBytes = bytes;
    m_MostSteps = std::max(steps, 1);
    if (m_bBusy || m_Baseline == nullptr) {
        return;
    }
    bool trimmed = false;
    {
        const CBusyScope busy(m_bBusy);
        if (!Attempt([&] { m_Forgotten.reserve(m_Steps.size()); })) {
            return; // The next mark trims.
        }
        Trim();
        // Where undone steps alone are too much, those that would be redone last are forgotten.
        while (m_Steps.size() > 1 && static_cast<int>(m_Steps.size()) > m_Position &&
               (m_Bytes > m_MostBytes || static_cast<int>(m_Steps.size()) > m_MostSteps)) {
            m_Bytes -= m_Steps.back()->bytes;
            m_Forgotten.push_back(std::move(m_Steps.back()));
            m_Steps.pop_back();
            m_Clean = m_Clean > static_cast<int>(m_Steps.size()) ? -1 : m_Clean;
        }
        trimmed = !m_Forgotten.empty();
        DropForgotten(false);
    }
    if (trimmed) {
        Tell(CDrawingHistoryListener::Forgotten);
    }
}

void CDrawingHistory::DropForgotten(bool visited) {
    const auto mayFree = [](const StepOwner& step) { return CHistoryBaseline::MayFree(*step->patch); };
    if (!visited && std::any_of(m_Forgotten.begin(), m_Forgotten.end(), mayFree)) {
        m_Baseline->VisitDrawing();
    }
    for (const StepOwner& step : m_Forgotten) {
        m_Baseline->Drop(*step->patch);
    }
    m_Forgotten.clear();
}

void CDrawingHistory::Forget() {
    if (m_pDocument == nullptr || m_bBusy) {
        return;
    }
    {
        const CBusyScope busy(m_bBusy);
        m_Forgotten.swap(m_Steps);
        m_Clean = m_Clean == m_Position ? 0 : -1;
        m_Position = 0;
        m_Bytes = 0;
        DropForgotten(false);
    }
    Tell(CDrawingHistoryListener::Forgotten);
}

void CDrawingHistory::GiveUp(CDrawable* object) {
    if (object != nullptr && m_Baseline != nullptr && !m_bBusy) {
        m_Baseline->GiveUp(object);
    }
}

int CDrawingHistory::Knows(CDrawable* object) const {
    return object != nullptr && m_Baseline != nullptr && m_Baseline->Knows(object);
}

void CDrawingHistory::Adopt(CDrawable* object) {
    if (m_Baseline != nullptr && !m_bBusy) {
        Attempt([&] { m_Baseline->Adopt(object); });
    }
}

// ---- Telling -------------------------------------------------------------------------------------------------------

// A host's document may throw, and a mark is also made in destructors.
void CDrawingHistory::SetModified(BOOL modified) {
    Attempt([&] { m_pDocument->SetModifiedFlag(modified); });
}

void CDrawingHistory::OnChanged(CDrawingHistoryListener::Change) {}

void CDrawingHistory::Tell(CDrawingHistoryListener::Change change) {
    const CKxAliveToken alive(m_Alive);
    Attempt([&] { OnChanged(change); });
    if (alive.IsAlive() && m_pListener != nullptr) {
        Attempt([&] { m_pListener->OnHistoryChanged(this, change); });
    }
}
