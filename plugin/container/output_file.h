// A file a function is to write, named by a parameter: a path or reference text, or a container
// stored by reference. A relative name is taken from the database's folder (a hosted database
// takes names as they are); the file itself need not exist yet, but its folder must.
#pragma once

#include <fmx/fmx.h>

#include <cstdint>
#include <string>

namespace vd::container {

enum class OutputFileStep { kText, kDatabasePath, kFinding };

// 0 with the file's absolute path; else the code, and step says which step failed.
int32_t OutputFileFromParameter(const FMX_DataVect* args, uint32_t index, std::string& path, OutputFileStep& step);

}  // namespace vd::container
