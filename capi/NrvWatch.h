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

// Keeps a number for each object, worked out from what the object would store. The selection plays no part.
class CNrvWatch {
public:
    bool IsOn() const { return m_On; }
    // Takes the drawing as it is now.
    void Begin(CGraphicDocument& document);
    // What has changed since; watches no longer.
    CNrvDifference End(CGraphicDocument& document);
    void Abandon();
    // What the host itself does meanwhile is told apart, and is no part of the difference.
    void Enter(CDrawable* object);
    void Forget(const CDrawable* object);

private:
    bool m_On = false;
    std::unordered_map<const CDrawable*, std::uint64_t> m_Numbers;
};
