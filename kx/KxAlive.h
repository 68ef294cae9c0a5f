// CKxAlive and CKxAliveToken: whether a window or an object still is the one that it was before a call that ran foreign
// code (a message, a hook, a notification, a modal box).
// Layer 2: kx (uses afx).
#pragma once

class CKxAlive;

// Held by code that works across such a call, on the stack or as a member. Asked once, right after the call: when
// IsAlive returns false, nothing of the owner may be used. A copy belongs to the same life. Never throws and never
// allocates.
class CKxAliveToken {
public:
    explicit CKxAliveToken(const CKxAlive& owner); // Belongs to the owner's present life.
    // Belongs to the same life as the other.
    CKxAliveToken(const CKxAliveToken& other) : m_State(other.m_State), m_Life(other.m_Life) { ++m_State->references; }
    CKxAliveToken& operator=(const CKxAliveToken&) = delete;
    ~CKxAliveToken() { Release(m_State); }
    // Whether that life still lasts.
    bool IsAlive() const { return m_State->life == m_Life; }

private:
    friend class CKxAlive;
    struct State {
        unsigned int references;
        unsigned long long life; // Incremented at each end.
    };
    static void Release(State* state) {
        if (--state->references == 0) {
            delete state;
        }
    }

    State* m_State;
    unsigned long long m_Life;
};

// A member of the object that may be freed. All tokens and the owner belong to one thread. The constructor throws what
// operator new throws.
class CKxAlive {
public:
    CKxAlive() : m_State(new CKxAliveToken::State{1, 0}) {}
    CKxAlive(const CKxAlive&) = delete;
    CKxAlive& operator=(const CKxAlive&) = delete;
    ~CKxAlive() {
        End();
        CKxAliveToken::Release(m_State);
    }
    // Every token made so far returns false from now on; later tokens belong to the next life. For an owner whose
    // window is destroyed and may be created again. Never throws.
    void End() { ++m_State->life; }

private:
    friend class CKxAliveToken;
    CKxAliveToken::State* m_State;
};

inline CKxAliveToken::CKxAliveToken(const CKxAlive& owner) : m_State(owner.m_State), m_Life(owner.m_State->life) {
    ++m_State->references;
}
