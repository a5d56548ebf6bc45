// Loading a script as the editor's open command does, for the commands that
// read one: a fresh document, a temporary folder for the working file, reset,
// name the script, read. Nothing is asked: with Missing::Keep every folder or
// part file that cannot be found stays as the script wrote it; with
// Missing::Refuse the first such question breaks the load off. Problems of
// the script go to stderr, and so does each place where a save will change
// the model, one line "warning: FILE, line N: TEXT (KIND)" each.
#pragma once

#include "AppState.h"
#include "document/Document.h"
#include "document/LoadFindings.h"

#include <array>
#include <string>

namespace quarle::qc {

enum class Missing { Keep, Refuse };

struct LoadedScript {
    // 0: loaded; 1: the file is no script (binary, UTF-16); 2: the script or
    // the working file could not be used; 3: a question was refused. The
    // exit status of a command that stops here.
    int Status = 2;
    // Lives until the process ends (see LoadScript).
    Document* Doc = nullptr;
    // Sequences of group 0: the rows the animation list would show.
    int AnimationRows = 0;
    // What the load found (printed as warnings already).
    LoadFindings Findings;
};

// A fresh folder for working files, removed again with all it holds at the
// end; Path() is empty when none could be made. With a script, the folder
// has room for a load of it (see WorkBase in LoadScript.cpp).
class WorkFolder {
public:
    explicit WorkFolder(const std::string& script = {});
    ~WorkFolder();
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    const std::string& Path() const { return path_; }

private:
    std::string path_;
};

// texts: the active texts of the global strings, used for the words of the
// questions; null gives English words for them.
LoadedScript LoadScript(const std::string& path, Missing missing,
                        const std::array<std::string, LastIds + 1>* texts = nullptr);

} // namespace quarle::qc
