// What the tests of the curved kinds share: short forms for points, grips and rows. Layer 16: tests.
#pragma once

#include "Drawable.h"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>

// Grip indices as the grip command passes them.
struct Indices : CIndexArray {
    Indices(std::initializer_list<int> values) {
        for (int value : values) {
            Add(value);
        }
    }
};

inline void MoveGrip(CDrawable& object, int grip, double dx, double dy) {
    object.moveGripPointsAt(Indices({grip}), CGeVector2d(dx, dy));
}

struct Grips {
    explicit Grips(CDrawable& object, int mask = 5) { object.getGripPoints(points, mask); }
    INT_PTR Size() const { return points.GetSize(); }
    CGePoint2d& operator[](int i) { return points[i]; }
    CGePointArray points;
};

// The rows of an object, freed at the end.
struct PropertyList {
    PropertyList() = default;
    explicit PropertyList(CDrawable& object) { object.GetProperty(list); }
    ~PropertyList() { list.Clear(); }
    PropertyList(const PropertyList&) = delete;
    PropertyList& operator=(const PropertyList&) = delete;
    // Sets a new value and marks it as edited, as the property window does.
    void Change(LPCTSTR key, const COleVariant& value) {
        CSimpleProperty* row = list.Find(key);
        row->m_Value = value;
        row->m_Changed = 1;
    }
    CDrawableProperty list;
};

struct ExpectedRow {
    LPCTSTR key;
    LPCTSTR label;
    VARTYPE type;  // that the row was made with
    VARTYPE value; // that its value has
};

// Takes the row at `index` and compares everything but the value itself.
#define EXPECT_ROW(list, index, expected)                                                                              \
    do {                                                                                                               \
        const CSimpleProperty* row_ = (list).GetRow(index);                                                            \
        ASSERT_NE(nullptr, row_) << (index);                                                                           \
        EXPECT_EQ(CString((expected).key), row_->GetKey()) << (index);                                                 \
        EXPECT_EQ(CString((expected).label), row_->GetLabel()) << (index);                                             \
        EXPECT_EQ(CString((expected).label), row_->m_Description) << (index);                                          \
        EXPECT_EQ((expected).type, row_->m_Type) << (index);                                                           \
        EXPECT_EQ((expected).value, row_->GetValue().vt) << (index);                                                   \
        EXPECT_EQ(RUNTIME_CLASS(CSimpleProperty), row_->GetRuntimeClass()) << (index);                                 \
        EXPECT_EQ(0, row_->m_Changed) << (index);                                                                      \
    } while (false)

// For EXPECT_TRUE: x and y within a few of their last digits, or within a tolerance.
inline testing::AssertionResult IsAt(double x, double y, const CGePoint2d& point) {
    const testing::internal::Double ax(x);
    const testing::internal::Double ay(y);
    if (ax.AlmostEquals(testing::internal::Double(point.x)) && ay.AlmostEquals(testing::internal::Double(point.y))) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << testing::PrintToString(point.x) << ", " << testing::PrintToString(point.y)
                                       << " in place of " << x << ", " << y;
}

inline testing::AssertionResult IsNear(double x, double y, const CGePoint2d& point, double tolerance) {
    if (std::fabs(point.x - x) <= tolerance && std::fabs(point.y - y) <= tolerance) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << testing::PrintToString(point.x) << ", " << testing::PrintToString(point.y)
                                       << " in place of " << x << ", " << y;
}

#define EXPECT_POINT(px, py, point) EXPECT_TRUE(IsAt((px), (py), (point)))
#define EXPECT_POINT_NEAR(px, py, point, tolerance) EXPECT_TRUE(IsNear((px), (py), (point), (tolerance)))
