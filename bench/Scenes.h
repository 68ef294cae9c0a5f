// The drawings that the benchmark paints, loads, saves and searches. Layer 15: bench.
#pragma once

class CGraphicDocument;

namespace bench {

// The drawing is kWidth times kHeight units large, whatever the number of its objects; at scale 1 it fills the window.
// Every pen is a pixel wide at every zoom.
constexpr int kWidth = 1000;
constexpr int kHeight = 800;

enum class Scene {
    Lines,     // S1: short lines, one in eight dashed
    Polylines, // S2: of four vertices, one of three segments an arc
    Mixed      // S3: lines, polylines, circles, arcs and texts
};

const char* NameOf(Scene scene);
// Adds that many objects; the same each time.
void Fill(CGraphicDocument& document, Scene scene, int count);
// A quarter of the mixed scene.
void FillTexts(CGraphicDocument& document, int count);

} // namespace bench
