#include <cstdio>

#include "Commands.h"

namespace quarle::qc {

int RunCheck(const Args&) {
    std::fprintf(stderr, "quarle-qc: 'check' is not built yet\n");
    return 2;
}

} // namespace quarle::qc
