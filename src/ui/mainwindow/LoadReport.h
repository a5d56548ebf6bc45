// What a load of a script from elsewhere changes: the message after the load
// that says whether a save changes what the compiler reads and names the
// places worth knowing, the copy of the original that the first save over
// such a script keeps beside it, and the includes a save wrote into the script.
#pragma once

#include "AppState.h"
#include "document/LoadFindings.h"
#include "platform/Services.h"

#include <string>
#include <vector>

namespace quarle::ui {

class LoadReport {
public:
    LoadReport(AppState& state, platform::Services& services)
        : state_(state), services_(services) {}

    // After a load: tells the user once where a save will change the model,
    // and remembers the script, so that the first save over it keeps the
    // original. No findings: nothing is shown.
    void ReportLoadFindings(const LoadFindings& findings);
    // After a load of a file that held no directive at all: says so, and
    // keeps the original of a file that is not empty on the first save over it.
    void ReportNoDirective();
    // Before a save over QcFile: keeps the original of a script whose load
    // had findings beside it (NAME.qc.orig, or the next free name). False,
    // after a message, when it cannot be kept: then nothing is written.
    bool KeepOriginalBeforeSave();
    // After a save that wrote includes into the script (the user changed
    // what they hold): names them, once each for the document on show.
    void ReportIncludesWrittenIn(const std::vector<std::string>& includes);
    // Another document is on show: its includes are named anew.
    void ForgetIncludesReported();

private:
    // The first save over this script keeps its original.
    void KeepOriginalOnFirstSave(const std::string& script);

    AppState& state_;
    platform::Services& services_;
    // Scripts loaded with findings whose original has not been kept yet.
    std::vector<std::string> originalsToKeep_;
    // The includes a save of the document on show has named as written in.
    std::vector<std::string> includesReported_;
};

} // namespace quarle::ui
