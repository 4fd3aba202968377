// SPDX-License-Identifier: MIT
// Bytes of any kind, imported and pasted: what is added are symbols, and undoing leaves the watchlist as it was.

#include "watchlist/edit/ImportText.h"
#include "watchlist/ScratchDoc.h"
#include "watchlist/edit/PasteText.h"

#include <cstdlib>

namespace {

void Check(bool good) {
    if (!good) std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace vx;
    test::CScratchDoc scratch;
    scratch.Open("Columns=Symbol:1000;Last:1000;\r\nSymbols=IBM:1,4,;GE:2,;\r\nAnnotations=3:#Cars;\r\n");
    CWatchlistDoc& doc = scratch.doc;
    const std::string before = scratch.Written();
    const std::string text = DecodeImportBytes({reinterpret_cast<const char*>(data), size});

    const SImportPreview preview = ReadImport(doc, text);
    const SImportResult imported = ApplyImport(doc, preview, 2);
    Check(imported.leftOut != 0 || doc.SymbolCount() == 2 + preview.toAdd.size());
    Check(ReadImport(doc, text).toAdd.empty() || imported.leftOut != 0);
    if (!preview.toAdd.empty()) doc.Undo().Undo();
    Check(scratch.Written() == before && !doc.IsModified());

    doc.Undo().Clear(); // The import could be redone.
    const SPasteResult pasted = PasteText(doc, 1, 2, text);
    const std::string after = scratch.Written();
    Check(pasted.outcome == EPasteOutcome::Pasted || after == before);
    while (doc.Undo().Undo().done) {
    }
    Check(scratch.Written() == before);
    while (doc.Undo().Redo().done) {
    }
    Check(scratch.Written() == after);
    return 0;
}
