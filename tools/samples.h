// What the sources of the sample drawings share.
// Layer 14: tools.
#pragma once

#include <VectorLabel.h>
#include <vectorview.h>

void MakeMechanicalPart(CVectorView& view); // sample_mechanical.cpp
void MakeTexts(CVectorView& view);          // sample_texts.cpp

// A green dimension label between two measured points, its line `away` from them. Its figure, 100 drawing units high,
// is placed beyond the line where `away` points upwards or to the right, otherwise between the line and the points.
CKXVectorLabel& AddLabel(CVectorView& view, CGePoint2d left, CGePoint2d right, CGeVector2d away); // sample_texts.cpp
