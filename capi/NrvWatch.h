// CNrvWatch: tells what a command has done to a drawing, by a comparison of the drawing before and after it.
// Layer 12: capi.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

class CDrawable;
class CGraphicDocument;

struct CNrvDifference {
    std::vector<CDrawable*> added;
    std::vector<CDrawable*> modified;
    std::vector<const CDrawable*> removed; // Compared only: they may have been freed.
};

// Keeps a hash of what each object would store. The selection plays no part.
class CNrvWatch {
public:
    bool IsOn() const { return m_On; }
    // Begins with the present drawing.
    void Begin(CGraphicDocument& document);
    // Returns what has changed since Begin, and ends the watch.
    CNrvDifference End(CGraphicDocument& document);
    void Abandon();
    // Changes that the host itself makes meanwhile are announced here, and are no part of the difference.
    void Enter(CDrawable* object);
    void Forget(const CDrawable* object);

private:
    bool m_On = false;
    std::unordered_map<const CDrawable*, std::uint64_t> m_Numbers;
};
