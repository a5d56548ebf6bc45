// How the script reader reaches the user. The main window implements this
// class; tests and quarle-qc script it. The reader never prints and never
// shows anything itself.
#pragma once

#include "document/InputFile.h"
#include "localisation/GlobalStrings.h"
#include "localisation/MessageTexts.h"

#include <bitset>
#include <string>

namespace quarle {

// What a folder question is about. The main window needs only the texts
// (oldDir and extra); the kind lets scripted hosts answer without parsing them.
enum class FolderQuestion {
    ModelName,   // the folder of $modelname
    ModelPath,   // $cd
    TexturePath, // $cdtexture
    IncludeFile, // oldDir is the whole path of an $include file, not a folder
};

// Problems with a script that the reader works around; the load goes on
// unless the kind says otherwise. Each kind reaches the host at most once per
// load, with the detail of its first occurrence.
enum class ReadProblem {
    ScriptUnreadable,   // the script cannot be opened; the load ends
    WorkFileUnwritable, // loadbuffer.dat cannot be written; the load ends
    BinaryFile,         // the script holds NUL bytes, as a binary file does; the load ends
    Utf16Text,          // the script starts with a UTF-16 byte-order mark; the load ends
    PartFileMissing,    // a part's .smd is gone when textures are scanned; not scanned
    PartNotInModelPath, // the picked part file is not an .smd in ModelPath; part kept
};
inline constexpr int ReadProblemKinds = static_cast<int>(ReadProblem::PartNotInModelPath) + 1;

// The answer of a question for a refusal or a cancel.
inline constexpr const char* Refused = "0";

class ReaderHost {
public:
    virtual ~ReaderHost() = default;

    // The active text of a global string (IdsTexts of the key).
    virtual std::string Text(Ids key) = 0;

    // The folder question: tells the user that oldDir cannot be found (extra
    // names what is looked for) and lets them pick a file. Returns the folder
    // of the picked file, without a closing separator, or "0" when the user
    // refuses or cancels.
    virtual std::string NewDir(const std::string& oldDir, const std::string& extra,
                               FolderQuestion what) = 0;

    // A body part whose .smd file is missing: missingFile is the path that was
    // tested (ModelPath, separator, part, ".smd"), extra the text of
    // IDS_REFERENCEMODEL. The user picks the part's .smd; the answer is the
    // whole path of the picked file, or "0" for a refusal, which breaks off the
    // load like a refused folder.
    //
    // The reader takes the pick only when it is a file with the extension .smd
    // (any case) in the folder ModelPath; the part then becomes the file's base
    // name. A pick elsewhere is not copied or moved: the reader reports
    // PartNotInModelPath and keeps the part as the script wrote it. Answering
    // with missingFile itself therefore keeps the part unchanged.
    virtual std::string PickPartFile(const std::string& missingFile, const std::string& extra,
                                     const std::string& modelPath) = 0;

    // The new-document command: empties LstAnimations and resets the document
    // (InitVars), so that QcFile is empty. Runs when the user refuses a question
    // and when the script cannot be read.
    virtual void NewDocument() = 0;

    // A sequence of group 0 was read: append its name to LstAnimations. Names
    // may be empty; the list row is the slot.
    virtual void AddAnimation(const std::string& name) = 0;

    // A problem of the script; see ReadProblem. DescribeProblem gives a
    // sentence for it.
    virtual void Problem(ReadProblem kind, const std::string& detail) = 0;

    // A script that is not read (ScriptUnreadable), with why (InputFile.h).
    // By default told as Problem with the file's path.
    virtual void FileProblem(ReadProblem kind, const OpenProblem& problem) {
        Problem(kind, problem.Path);
    }

    // How far the load is: done of total bytes of the script read (its
    // includes count where their line stands; total of total: the texture
    // scans of the parts follow). Called every few hundred directives; false
    // cancels the load (ReadOutcome::Cancelled).
    virtual bool Progress(std::size_t /*done*/, std::size_t /*total*/) { return true; }

    // The load went through: enable the model files page, point FileList at
    // ModelPath when that folder holds files, Update, enable the animation wizard.
    virtual void LoadFinished() = 0;
};

// The message that tells of a problem: the messages follow the kinds.
inline Msg ProblemMessage(ReadProblem kind) {
    static_assert(MSG_READ_PART_NOT_IN_MODEL_PATH - MSG_READ_SCRIPT_UNREADABLE + 1 ==
                      ReadProblemKinds,
                  "one message for each kind of problem, in the same order");
    return static_cast<Msg>(MSG_READ_SCRIPT_UNREADABLE + static_cast<int>(kind));
}

// The sentence for a problem in the given texts (English unless a host
// passes those of the active language), with the detail, where there is one,
// as MSG_READ_DETAIL puts it.
std::string DescribeProblem(ReadProblem kind, const std::string& detail,
                            const MessageTexts& texts = EnglishMessageTexts());

// Passes each kind of problem to the host once per load.
class ProblemOnce {
public:
    explicit ProblemOnce(ReaderHost& host) : host_(host) {}
    void operator()(ReadProblem kind, const std::string& detail) {
        if (First(kind)) {
            host_.Problem(kind, detail);
        }
    }
    void File(ReadProblem kind, const OpenProblem& problem) {
        if (First(kind)) {
            host_.FileProblem(kind, problem);
        }
    }

private:
    bool First(ReadProblem kind) {
        const auto i = static_cast<std::size_t>(kind);
        const bool first = !seen_[i];
        seen_[i] = true;
        return first;
    }

    ReaderHost& host_;
    std::bitset<ReadProblemKinds> seen_;
};

} // namespace quarle
