#include <cstdio>

#include "Commands.h"

namespace quarle::qc {

int RunScan(const Args&) {
    std::fprintf(stderr, "quarle-qc: 'scan' is not built yet\n");
    return 2;
}

} // namespace quarle::qc
