// SPDX-License-Identifier: MIT
#include "data/merge/MergeKernel.h"

#include "base/Text.h"

namespace vx {

std::string_view SCutLine::Trimmed(std::string_view line, size_t index) const {
    return TrimBlanks(line.substr(begins[index], ends[index] - begins[index]));
}

const SMergeKernel& BestKernel() {
    static const SMergeKernel& best = Avx512Kernel() ? *Avx512Kernel()
                                      : Avx2Kernel() ? *Avx2Kernel()
                                                     : PortableKernel();
    return best;
}

} // namespace vx
