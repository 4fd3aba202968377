#include "data/MergeKernel.h"

#include "base/Text.h"

namespace vx {

std::string_view SCutLine::Symbol(std::string_view line) const {
    if (count == 0 || fields[0].slot != 0) return {};
    return TrimBlanks(line.substr(fields[0].begin, fields[0].end - fields[0].begin));
}

const SMergeKernel& BestKernel() {
    static const SMergeKernel& best = Avx2Kernel() ? *Avx2Kernel() : PortableKernel();
    return best;
}

} // namespace vx
