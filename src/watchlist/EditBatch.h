#pragma once

namespace vx {

class CWatchlistDoc;

/// While it stands, a document may be changed in many rows at the cost of one change: symbols that leave a row and come
/// to another stay watched, news counts are asked for together, and the status text and the view are brought up to date
/// once, at the end of the outermost batch.
///
/// Thread  GUI thread only
class CEditBatch {
public:
    explicit CEditBatch(CWatchlistDoc& doc);
    ~CEditBatch();
    CEditBatch(const CEditBatch&) = delete;
    CEditBatch& operator=(const CEditBatch&) = delete;

private:
    CWatchlistDoc& m_doc;
};

} // namespace vx
