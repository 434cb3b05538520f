// Any bytes: what the reader takes must come back the same after writing and reading again.
#include "core/grid_difference.h"
#include "core/grid_file.h"

#include <cstdio>
#include <cstdlib>

namespace {

void require(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "%s\n", what);
    std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const auto bytes =
        QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const auto read = readGridFile(bytes);
    if (!read) return 0;
    const QByteArray written = writeGridFile(*read, false);
    require(!written.isEmpty(), "what was read cannot be written");
    const auto again = readGridFile(written);
    require(again.has_value(), "what was written cannot be read");
    const QString difference = differenceOf(*read, *again);
    require(difference.isEmpty(), difference.toUtf8().constData());
    require(writeGridFile(*again, false) == written, "the second writing differs");
    return 0;
}
