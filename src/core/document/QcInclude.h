// The files a script names: reading a script or include whole, and where a
// relative path of a script points.
#pragma once

#include "document/InputFile.h"

#include <string>
#include <string_view>
#include <vector>

namespace quarle {

// The lines of a text file: a line ends at LF, CR LF or a lone CR; a last
// line without an end counts. Bytes are kept as they are.
std::vector<std::string_view> SplitLines(std::string_view text);

// The whole of a script or include, opened as InputFile opens it (regular
// files only, within the size limit of scripts); false, with problem filled,
// when it is refused or cannot be read.
bool ReadWholeFile(const std::string& path, std::string& text, OpenProblem* problem = nullptr);

// The path on disk for a path of a script: separators of this machine, and a
// relative path taken from baseFolder (when there is one).
std::string DiskPath(std::string_view scriptPath, const std::string& baseFolder);

// A relative folder of a script as the compiler finds it: taken from the
// script's folder, without "." and ".." steps, in its spelling on disk when
// it exists there. An absolute folder comes back in this machine's style.
std::string FolderBeside(const std::string& scriptFolder, std::string_view folder);

// The folder to write for a $cd or $cdtexture: the relative text the script
// had, while it still names the folder held, seen from the script's folder;
// else the folder held.
std::string FolderToWrite(const std::string& held, const std::string& asWritten,
                          const std::string& scriptFolder);

} // namespace quarle
