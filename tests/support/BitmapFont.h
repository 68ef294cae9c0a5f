// A font without outlines, made here and known to this process alone. Layer 16: tests.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

// A font of pixels, 8 by 8, without outlines, under the name "NR Bitmap" while it exists.
class BitmapFont {
public:
    BitmapFont() {
        constexpr size_t kFirst = 32;
        constexpr size_t kLast = 126;
        constexpr size_t kGlyphs = kLast - kFirst + 2;
        constexpr size_t kTable = 118;
        constexpr size_t kBits = kTable + 4 * kGlyphs;
        constexpr size_t kFace = kBits + 8 * kGlyphs;
        const char name[] = "NR Bitmap";
        m_file.assign(kFace + sizeof(name), 0);
        Put(0, 0x200, 2); // version 2.0
        Put(2, m_file.size(), 4);
        Put(68, 6, 2);  // points
        Put(70, 96, 2); // resolution, both ways
        Put(72, 96, 2);
        Put(74, 7, 2);   // ascent
        Put(83, 400, 2); // weight
        Put(86, 8, 2);   // width and height in pixels
        Put(88, 8, 2);
        Put(90, 0x30, 1); // fixed pitch, modern
        Put(91, 8, 2);    // average and greatest width
        Put(93, 8, 2);
        Put(95, kFirst, 1);
        Put(96, kLast, 1);
        Put(99, kGlyphs, 2); // bytes in a row
        Put(105, kFace, 4);
        Put(113, kBits, 4);
        for (size_t i = 0; i < kGlyphs; ++i) {
            Put(kTable + 4 * i, 8, 2);
            Put(kTable + 4 * i + 2, kBits + 8 * i, 2);
            for (size_t row = 0; row < 8; ++row) {
                Put(kBits + 8 * i + row, 0x7E, 1);
            }
        }
        std::memcpy(&m_file[kFace], name, sizeof(name));
        DWORD count = 0;
        m_handle = ::AddFontMemResourceEx(m_file.data(), static_cast<DWORD>(m_file.size()), nullptr, &count);
        EXPECT_EQ(1u, count);
    }
    ~BitmapFont() { ::RemoveFontMemResourceEx(m_handle); }

private:
    void Put(size_t at, size_t value, int bytes) {
        for (int i = 0; i < bytes; ++i) {
            m_file[at + static_cast<size_t>(i)] = static_cast<BYTE>(value >> (8 * i));
        }
    }

    std::vector<BYTE> m_file;
    HANDLE m_handle;
};
