// A stand-in for the model compiler, so that compiles run headless in tests.
//
// Usage: fake_studiomdl SCRIPT.qc
// Prints lines in the manner of the real compiler (its own arguments
// included, for tests of the quoting), reads the script, and writes the file
// named by $modelname. Like the real one it takes relative paths from its
// working folder: once the script has given a $cd, each $body part must be
// found there as FOLDER/PART.smd, else it stops with the real one's words.
// What it does can be steered by lines in the script,
//   // fake: exit N      exit with status N
//   // fake: sleep MS    wait MS milliseconds before doing the work
//   // fake: say TEXT    print TEXT as a line of output
//   // fake: nomdl       write no model
// or by the environment: FAKE_STUDIOMDL_EXIT, FAKE_STUDIOMDL_SLEEP_MS,
// FAKE_STUDIOMDL_NOMDL (any value).
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

namespace {

std::string Trim(const std::string& s) {
    const auto first = s.find_first_not_of(" \t\r\n");
    if (first == std::string::npos) {
        return {};
    }
    const auto last = s.find_last_not_of(" \t\r\n");
    return s.substr(first, last - first + 1);
}

std::string Unquote(std::string s) {
    s = Trim(s);
    if (s.size() >= 2 && s.front() == '"' && s.back() == '"') {
        return s.substr(1, s.size() - 2);
    }
    return s;
}

bool StartsWith(const std::string& s, const std::string& prefix) {
    return s.compare(0, prefix.size(), prefix) == 0;
}

} // namespace

int main(int argc, char** argv) {
    std::printf("fake studiomdl 1.0\n");
    std::printf("arguments: %d\n", argc - 1);
    for (int i = 1; i < argc; ++i) {
        std::printf("qc: %s\n", argv[i]);
    }
    std::fflush(stdout);
    if (argc < 2) {
        std::printf("ERROR: no script given\n");
        return 1;
    }

    int exitCode = 0;
    long sleepMs = 0;
    bool writeModel = true;
    if (const char* v = std::getenv("FAKE_STUDIOMDL_EXIT")) {
        exitCode = std::atoi(v);
    }
    if (const char* v = std::getenv("FAKE_STUDIOMDL_SLEEP_MS")) {
        sleepMs = std::atol(v);
    }
    if (std::getenv("FAKE_STUDIOMDL_NOMDL")) {
        writeModel = false;
    }

    std::ifstream script(argv[1], std::ios::binary);
    if (!script) {
        std::printf("************ ERROR ************\n");
        std::printf("ERROR: cannot open %s\n", argv[1]);
        return 1;
    }

    std::string modelName;
    std::string cd;
    bool cdGiven = false;
    std::vector<std::string> parts;
    std::vector<std::string> say;
    int sequences = 0;
    std::string line;
    while (std::getline(script, line)) {
        const std::string t = Trim(line);
        if (StartsWith(t, "// fake:")) {
            const std::string directive = Trim(t.substr(8));
            if (StartsWith(directive, "exit ")) {
                exitCode = std::atoi(directive.c_str() + 5);
            } else if (StartsWith(directive, "sleep ")) {
                sleepMs = std::atol(directive.c_str() + 6);
            } else if (StartsWith(directive, "say ")) {
                say.push_back(directive.substr(4));
            } else if (directive == "nomdl") {
                writeModel = false;
            }
        } else if (StartsWith(t, "$modelname")) {
            modelName = Unquote(t.substr(10));
        } else if (StartsWith(t, "$cdtexture")) {
            // not looked at
        } else if (StartsWith(t, "$cd")) {
            cd = Unquote(t.substr(3));
            cdGiven = true;
        } else if (StartsWith(t, "$body")) {
            // $body NAME "PART"
            const std::string rest = Trim(t.substr(5));
            const auto blank = rest.find_first_of(" \t");
            if (blank != std::string::npos) {
                parts.push_back(Unquote(rest.substr(blank)));
            }
        } else if (StartsWith(t, "$sequence")) {
            ++sequences;
            std::printf("grabbing sequence %s\n", Trim(t.substr(9)).c_str());
        }
    }
    std::fflush(stdout);

    for (const std::string& part : parts) {
        const std::string file = cd + "/" + part + ".smd";
        if (cdGiven && !std::ifstream(file)) {
            std::printf("\n************ ERROR ************\n%s doesn't exist\n", file.c_str());
            return 1;
        }
        std::printf("grabbing %s\n", file.c_str());
    }
    std::fflush(stdout);

    if (sleepMs > 0) {
        std::this_thread::sleep_for(std::chrono::milliseconds(sleepMs));
    }
    for (const std::string& s : say) {
        std::printf("%s\n", s.c_str());
    }
    std::printf("sequences: %d\n", sequences);
    if (sequences == 0) {
        std::printf("************ ERROR ************\n");
        std::printf("ERROR: model has no sequences\n");
        exitCode = exitCode ? exitCode : 1;
    } else if (writeModel && !modelName.empty()) {
        std::ofstream mdl(modelName, std::ios::binary | std::ios::trunc);
        mdl << "IDST" << sequences;
        std::printf(mdl ? "writing %s\n" : "ERROR: cannot write %s\n", modelName.c_str());
    }
    std::fflush(stdout);
    return exitCode;
}
