#pragma once

#include "alerts/rules/AlertInfo.h"
#include "data/catalogue/CellFormat.h"
#include "settings/SettingsTable.h"
#include "watchlist/document/CellFormatStore.h"
#include "watchlist/document/RowImages.h"
#include "watchlist/document/UndoTarget.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

namespace vx {

/// Where an operation changed something, to show it to the user.
struct STouched {
    std::vector<uint32_t> rowIds;
    int gap = 0; ///< Where rows were taken out.
    int firstColumn = 0, lastColumn = 0;
};

/// What an operation is about. Formats are named by their columns: an operation that moves these is of their kind.
enum class EUndoKind { Rows, Formats, RowCount, RowOrder, HiddenRows, Layout, Alerts, Setting };

/// One part of an undo step: holds what the document does not have now, and exchanges the two.
///
/// Thread  GUI thread only
class CUndoOp {
public:
    virtual ~CUndoOp() = default;

    virtual EUndoKind Kind() const = 0;
    virtual void Exchange(CUndoTarget& target, STouched& touched) = 0;
    /// Forgets what is the same in the document. No operation of the same kind has come after this one.
    ///
    /// Returns whether anything remains
    virtual bool DropUnchanged(CUndoTarget& target) = 0;
    /// False when nothing that is saved differs.
    virtual bool IsEdit() const { return true; }
    virtual size_t Bytes() const = 0;
};

/// What stood in rows.
class CRowOp final : public CUndoOp {
public:
    /// The row is about to change; only the first time counts.
    void Touch(CUndoTarget& target, int row);
    /// No further row comes.
    void Seal() { m_seen = {}; }

    EUndoKind Kind() const override { return EUndoKind::Rows; }
    void Exchange(CUndoTarget& target, STouched& touched) override;
    bool DropUnchanged(CUndoTarget& target) override;
    bool IsEdit() const override { return m_isEdit; }
    size_t Bytes() const override { return m_images.Bytes(); }

private:
    CRowImages m_images;
    std::vector<bool> m_seen; ///< By number of the row.
    bool m_isEdit = true;
};

/// Formats of cells, columns and the grid.
class CFormatOp final : public CUndoOp {
public:
    void Touch(CUndoTarget& target, int row, int column);
    void Seal() { m_seen = {}; }

    EUndoKind Kind() const override { return EUndoKind::Formats; }
    void Exchange(CUndoTarget& target, STouched& touched) override;
    bool DropUnchanged(CUndoTarget& target) override;
    size_t Bytes() const override { return m_cells.capacity() * sizeof(SCell); }

private:
    struct SCell {
        uint32_t rowId; ///< 0 for a column's or the grid's format.
        int column;
        std::optional<SCellFormat> format;
    };

    std::vector<int> Rows(const CUndoTarget& target) const;

    std::vector<SCell> m_cells;
    std::unordered_set<uint64_t> m_seen;
};

/// Columns of formats that came, went or moved.
class CFormatColumnsOp final : public CUndoOp {
public:
    CFormatColumnsOp(EFormatColumns change, int from, int to) : m_change(change), m_from(from), m_to(to) {}

    EUndoKind Kind() const override { return EUndoKind::Formats; }
    void Exchange(CUndoTarget& target, STouched& touched) override;
    bool DropUnchanged(CUndoTarget&) override { return true; }
    size_t Bytes() const override { return sizeof *this; }

private:
    EFormatColumns m_change; ///< That led to what the document has.
    int m_from;
    int m_to;
};

/// Rows that were inserted or taken out, without what stood in them.
class CRowCountOp final : public CUndoOp {
public:
    /// rows: rising; inserted: they are in the document now.
    CRowCountOp(std::vector<SRowPlace> places, bool inserted) : m_places(std::move(places)), m_inserted(inserted) {}

    EUndoKind Kind() const override { return EUndoKind::RowCount; }
    void Exchange(CUndoTarget& target, STouched& touched) override;
    bool DropUnchanged(CUndoTarget&) override { return !m_places.empty(); }
    size_t Bytes() const override { return m_places.capacity() * sizeof(SRowPlace); }

private:
    void Remove(CUndoTarget& target, STouched& touched);

    std::vector<SRowPlace> m_places;
    bool m_inserted;
};

/// The order in which rows stood.
class CRowOrderOp final : public CUndoOp {
public:
    explicit CRowOrderOp(std::vector<uint32_t> ids) : m_ids(std::move(ids)) {}

    EUndoKind Kind() const override { return EUndoKind::RowOrder; }
    void Exchange(CUndoTarget& target, STouched& touched) override;
    bool DropUnchanged(CUndoTarget& target) override;
    size_t Bytes() const override { return m_ids.capacity() * sizeof(uint32_t); }

private:
    std::vector<uint32_t> m_ids; ///< Those rows, wherever they are now, stood in this order.
};

/// Rows that were hidden or shown again.
class CHiddenRowsOp final : public CUndoOp {
public:
    /// hidden: what they are in the document now.
    CHiddenRowsOp(std::vector<uint32_t> ids, bool hidden) : m_ids(std::move(ids)), m_hidden(hidden) {}

    EUndoKind Kind() const override { return EUndoKind::HiddenRows; }
    void Exchange(CUndoTarget& target, STouched& touched) override;
    bool DropUnchanged(CUndoTarget&) override { return !m_ids.empty(); }
    size_t Bytes() const override { return m_ids.capacity() * sizeof(uint32_t); }

private:
    std::vector<uint32_t> m_ids;
    bool m_hidden;
};

/// Columns and options.
class CLayoutOp final : public CUndoOp {
public:
    CLayoutOp(SLayout other, SLayout present) : m_other(std::move(other)), m_present(std::move(present)) {}

    EUndoKind Kind() const override { return EUndoKind::Layout; }
    void Exchange(CUndoTarget& target, STouched& touched) override;
    bool DropUnchanged(CUndoTarget&) override { return true; }
    size_t Bytes() const override;

private:
    SLayout m_other;
    SLayout m_present; ///< As this operation left it: what was changed otherwise since is not put back.
};

/// All alerts, then those of the symbols that differ.
///
/// What became of an alert since stays: that it fired, or was armed again, perhaps with another threshold. Undoing arms
/// nothing that fired.
class CAlertOp final : public CUndoOp {
public:
    explicit CAlertOp(CUndoTarget& target);

    EUndoKind Kind() const override { return EUndoKind::Alerts; }
    void Exchange(CUndoTarget& target, STouched& touched) override;
    bool DropUnchanged(CUndoTarget& target) override;
    size_t Bytes() const override;

private:
    struct SAlerts {
        std::string symbol;
        CAlertArray other;
        CAlertArray present; ///< As this operation left them.
    };
    std::vector<SAlerts> m_alerts; ///< By symbol, rising.
    bool m_isDifference = false;   ///< Else all symbols that had alerts.
};

/// A setting of the whole application that a command of the board changed. The watchlist itself stays as it is.
class CTextSettingOp final : public CUndoOp {
public:
    CTextSettingOp(const STextSetting& setting, CUndoTarget& target);

    EUndoKind Kind() const override { return EUndoKind::Setting; }
    void Exchange(CUndoTarget& target, STouched& touched) override;
    bool DropUnchanged(CUndoTarget& target) override;
    bool IsEdit() const override { return false; }
    size_t Bytes() const override { return sizeof *this + m_other.capacity() + m_present.capacity(); }

private:
    const STextSetting& m_setting;
    std::string m_other;
    std::string m_present; ///< As this operation left it: what another window wrote since is not put back.
};

} // namespace vx
