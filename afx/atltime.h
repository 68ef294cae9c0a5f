// CTime: a moment in seconds since 1970 (UTC), as file stamps carry it.
// Classes: CTime.
// Layer 1: afx.
#pragma once

#include "afxapi.h"
#include <ctime>

class NRAFX_API CTime {
public:
    CTime() noexcept : m_time(0) {}
    CTime(__time64_t time) noexcept : m_time(time) {}
    CTime(int nYear, int nMonth, int nDay, int nHour, int nMin, int nSec); // local time
    explicit CTime(const FILETIME& fileTime) noexcept;
    static CTime WINAPI GetCurrentTime() noexcept;

    __time64_t GetTime() const noexcept { return m_time; }
    FILETIME GetAsFileTime() const noexcept;
    bool GetAsSystemTime(SYSTEMTIME& timeDest) const; // local time; false for a moment out of range
    int GetYear() const;
    int GetMonth() const; // 1 to 12
    int GetDay() const;   // 1 to 31
    int GetHour() const;
    int GetMinute() const;
    int GetSecond() const;

    bool operator==(CTime time) const noexcept { return m_time == time.m_time; }
    bool operator!=(CTime time) const noexcept { return m_time != time.m_time; }
    bool operator<(CTime time) const noexcept { return m_time < time.m_time; }
    bool operator>(CTime time) const noexcept { return m_time > time.m_time; }
    bool operator<=(CTime time) const noexcept { return m_time <= time.m_time; }
    bool operator>=(CTime time) const noexcept { return m_time >= time.m_time; }

private:
    __time64_t m_time;
};
