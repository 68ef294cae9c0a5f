// nrv: what the command line says, and the commands, each for one file.
// Layer 14: tools; includes the library's public headers only.
#pragma once

#include "nrv_drawing.h"

#include <DrawingRender.h>

#include <string>
#include <utility>
#include <vector>

enum NrvExit { kNrvDone = 0, kNrvPartLost = 1, kNrvFailed = 1, kNrvUnreadable = 2, kNrvBadUsage = 2 };

enum class NrvFormat { Plain, Json, Csv };

struct NrvOptions {
    CString command;
    std::vector<CString> files;
    std::vector<CString> switches; // All other arguments, without -j: passed on to further processes.
    NrvFormat format = NrvFormat::Plain;
    bool withFile = false; // Plain lines begin with the file's name.
    bool part = false;     // One of several processes: no frame around the output.
    int jobs = 1;
    CString output;      // "*" in it is the file's name without folder and extension.
    CString pictureKind; // "png", "emf", "svg"; empty: from the output's name.
    std::vector<std::pair<CString, CString>> values;
    CRenderOptions picture;
};

// The standard output of one run.
class CNrvPrinter {
public:
    explicit CNrvPrinter(const NrvOptions& options) : m_Options(options) {}
    void Begin();
    // Prints one row, with its line end in plain text and CSV; between rows of JSON this adds the commas.
    void Row(const std::string& row);
    // Prints unchanged, between Begin and End, what a process that ran a part of the files has printed.
    void Part(const std::string& rows);
    void End();
    void Write(const std::string& text);
    bool Failed() const { return m_Failed; }

private:
    const NrvOptions& m_Options;
    bool m_First = true;
    bool m_Failed = false;
};

// The file's exit code: what the drawing holds is printed as far as it could be read.
using NrvCommand = int (*)(const NrvOptions& options, const CString& file, CNrvPrinter& printer);
// Null for a word that is no command.
NrvCommand NrvCommandOf(const CString& word);

int NrvInfo(const NrvOptions& options, const CString& file, CNrvPrinter& printer);
int NrvList(const NrvOptions& options, const CString& file, CNrvPrinter& printer);
int NrvParams(const NrvOptions& options, const CString& file, CNrvPrinter& printer);
int NrvCheck(const NrvOptions& options, const CString& file, CNrvPrinter& printer);
int NrvSet(const NrvOptions& options, const CString& file, CNrvPrinter& printer);
int NrvRender(const NrvOptions& options, const CString& file, CNrvPrinter& printer);

// Where the picture of a file is put.
CString NrvOutputOf(const NrvOptions& options, const CString& file);

// Runs several processes of this program, each with a part of the files; the output is in the order of the files.
int NrvRunJobs(const NrvOptions& options, CNrvPrinter& printer);
// "3 of 10 NAME" on the standard error while it is a terminal; an empty name removes the line.
void NrvProgress(size_t done, size_t all, const CString& name);
