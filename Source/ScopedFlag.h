// CScopedFlag: sets a flag for the length of a block, whatever way the block is left.
// Layer 3: base.
#pragma once

class CScopedFlag {
public:
    explicit CScopedFlag(bool& flag) : m_Flag(flag) { m_Flag = true; }
    ~CScopedFlag() { m_Flag = false; }
    CScopedFlag(const CScopedFlag&) = delete;
    CScopedFlag& operator=(const CScopedFlag&) = delete;

private:
    bool& m_Flag;
};
