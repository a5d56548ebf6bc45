// The $sequence directive as the model compiler reads it: its name, then
// options and files to the end of the line, or, once a brace is open, across
// lines until the braces close again. The option words are case-blind, some
// of them by their first letters (loop, frame, blend, node, transition); an
// activity takes the token behind it as its weight, whatever it is; any
// word that is nothing else is one more animation file.
#pragma once

#include "document/Document.h"
#include "document/QcGrammar.h"
#include "document/ScriptLayout.h"

#include <memory>

namespace quarle {

struct SequenceResult {
    // It has a name; "$sequence" alone on its line stops the compiler.
    bool Named = false;
    // The compiler reads it without stopping (every option had its values,
    // the braces closed, a file was named).
    bool Complete = true;
    // Events read; the record holds them only up to MaxEvents.
    int Events = 0;
};

struct SequenceWords;

// Reads sequences one after the other, with room for their words that it
// keeps from one to the next.
class SequenceReader {
public:
    SequenceReader();
    ~SequenceReader();
    SequenceReader(const SequenceReader&) = delete;
    SequenceReader& operator=(const SequenceReader&) = delete;

    // Reads the sequence whose "$sequence" is the cursor's token into anim,
    // a fresh record, and into source the numbers the writer would write
    // otherwise. What the record has no field for (further files, motion
    // types other than LX, LY, LZ, node and transitions, pivots, a blend
    // without a second file or with an axis the forms do not turn) lands in
    // KeptFiles and KeptOptions, each token as written.
    SequenceResult Read(ScriptCursor& cursor, AnimRec& anim, SequenceSource& source);

private:
    std::unique_ptr<SequenceWords> words_;
};

} // namespace quarle
