#include <cstdio>
#include <cstring>

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: quarle-qc <command> ...\n");
        return 2;
    }
    std::fprintf(stderr, "quarle-qc: unknown command '%s'\n", argv[1]);
    return 2;
}
