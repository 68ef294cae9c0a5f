#include "Report.h"

#include <cstdio>

namespace bench {

namespace {

double RatioOf(const Row& row) {
    if (row.limit <= 0.0 || row.library <= 0.0) {
        return 0.0;
    }
    return row.isRate ? row.limit / row.library : row.library / row.limit;
}

bool IsMet(const Row& row) {
    const bool ratio = row.targetRatio <= 0.0 || RatioOf(row) <= row.targetRatio;
    const bool absolute = row.target <= 0.0 || (row.isRate ? row.library >= row.target : row.library <= row.target);
    return ratio && absolute;
}

} // namespace

void Print(const std::vector<Row>& rows) {
    std::printf("%-46s %9s %9s %11s %11s  %s\n", "", "objects", "ratio", "library", "limit", "to reach");
    for (const Row& row : rows) {
        const char* unit = row.isRate ? "M/s" : "ms";
        std::printf("%-46s %9d ", row.name.c_str(), row.objects);
        row.limit > 0.0 ? std::printf("%9.3f ", RatioOf(row)) : std::printf("%9s ", "");
        std::printf("%8.2f %-2s ", row.library, unit);
        row.limit > 0.0 ? std::printf("%8.2f %-2s ", row.limit, unit) : std::printf("%11s ", "");
        if (row.targetRatio > 0.0) {
            std::printf(" ratio %.2f%s", row.targetRatio, IsMet(row) ? "" : "  MISSED");
        } else if (row.target > 0.0) {
            std::printf(" %.1f %s%s", row.target, unit, IsMet(row) ? "" : "  MISSED");
        }
        std::printf("\n");
    }
    std::fflush(stdout);
}

bool WriteJson(const std::vector<Row>& rows, const wchar_t* path) {
    FILE* file = ::_wfopen(path, L"wb");
    if (file == nullptr) {
        return false;
    }
    std::fprintf(file, "{\n");
    for (size_t i = 0; i < rows.size(); ++i) {
        const Row& row = rows[i];
        std::fprintf(
            file,
            "  \"%s, %d\": {\"ratio\": %.4f, \"library\": %.4f, \"limit\": %.4f, \"unit\": \"%s\", \"met\": %s}%s\n",
            row.name.c_str(), row.objects, RatioOf(row), row.library, row.limit, row.isRate ? "M/s" : "ms",
            IsMet(row) ? "true" : "false", i + 1 < rows.size() ? "," : "");
    }
    std::fprintf(file, "}\n");
    return std::fclose(file) == 0;
}

} // namespace bench
