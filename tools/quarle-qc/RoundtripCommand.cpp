#include <cstdio>

#include "Commands.h"

namespace quarle::qc {

int RunRoundtrip(const Args&) {
    std::fprintf(stderr, "quarle-qc: 'roundtrip' is not built yet\n");
    return 2;
}

} // namespace quarle::qc
