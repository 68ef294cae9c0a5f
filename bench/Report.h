// The table and the JSON of a run. Layer 15: bench.
#pragma once

#include <string>
#include <vector>

namespace bench {

// One row. A ratio compares with the limit of the same run; a row without one has an absolute target.
struct Row {
    std::string name;
    int objects;
    double library;     // milliseconds, or million objects a second
    double limit;       // the same unit; 0: none
    double targetRatio; // 0: none
    double target;      // the same unit as `library`; 0: none
    bool isRate;        // million objects a second: more is better
};

// Which rows are measured: at first all, then those with one of the texts in their names.
void OnlyRowsWith(const char* text);
bool IsWanted(const std::string& name);

void Print(const std::vector<Row>& rows);
// In UTF-8. False when the file can't be written.
bool WriteJson(const std::vector<Row>& rows, const wchar_t* path);

} // namespace bench
