// CEventScope: while an event of an engine runs, the tools that end in it stay allocated.
// Layer 9: command operations.
#pragma once

#include "CommandOperation.h"
#include "MemoryInfo.h"
#include "OperationHost.h"

#include <memory>
#include <utility>
#include <vector>

using CToolOwner = CTracedOwner<CCommandOperation>;

// The events of one engine that run at this moment, one inside the other, and the tools that have ended in them.
// Shared by the engine and its open scopes, because the engine may be freed in one of its own events.
struct CEngineEvents {
    int depth = 0;
    std::vector<CToolOwner> ended; // Has memory for the running tool as well: its end can't be refused.
    CWnd* window = nullptr;        // The engine's; null once the engine has been freed.
    // What the window is told when the outermost event is over.
    bool changed = false;
    LPCTSTR chinese = nullptr;
    LPCTSTR english = nullptr;

    // The event has the names of a tool that ended in it; a change without names keeps them.
    void Change(LPCTSTR chineseName, LPCTSTR englishName) {
        changed = true;
        chinese = chineseName != nullptr ? chineseName : chinese;
        english = englishName != nullptr ? englishName : english;
    }
    void TellAtRest() {
        LPCTSTR const chineseName = std::exchange(chinese, nullptr);
        LPCTSTR const englishName = std::exchange(english, nullptr);
        if (std::exchange(changed, false)) {
            if (auto* host = dynamic_cast<COperationHost*>(window)) {
                host->OnEngineAtRest(chineseName, englishName);
            }
        }
    }
};

// Opened on the stack by every operation of an engine that calls a tool. The close of the outermost scope frees the
// tools that have ended, also when the event is left by an exception, and also when the engine has been freed
// meanwhile.
class CEventScope {
public:
    explicit CEventScope(std::shared_ptr<CEngineEvents> events) : m_Events(std::move(events)) { ++m_Events->depth; }
    CEventScope(const CEventScope&) = delete;
    CEventScope& operator=(const CEventScope&) = delete;
    ~CEventScope() {
        // A tool's destructor may end another tool; with the depth kept, its scope is an inner one and frees nothing.
        while (m_Events->depth == 1 && !m_Events->ended.empty()) {
            const CToolOwner freed = std::move(m_Events->ended.front());
            m_Events->ended.erase(m_Events->ended.begin());
        }
        if (--m_Events->depth == 0 && m_Events->changed) {
            m_Events->TellAtRest();
        }
    }

private:
    std::shared_ptr<CEngineEvents> m_Events;
};
