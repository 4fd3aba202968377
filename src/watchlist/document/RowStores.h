#pragma once

#include <string>
#include <vector>

namespace vx {

class CCellFormatStore;
class CInvalidSymbols;
class CNoteStore;
class CRowTable;
class CRowTextMap;
class CShownTexts;
class CSymbolMap;

/// Everything that a document keeps by grid row. What moves a row moves it in all of them at once, in time that grows
/// with the rows in use and not with the number of steps.
///
/// Shape   rows count from 1; a permutation is given as newRowOf[r], where row r goes, for r from 0 (unused) up to the
///         greatest row that it covers
/// Owns    nothing
/// Thread  GUI thread only
struct SRowStores {
    CRowTable& rows;
    CSymbolMap& symbols;
    CInvalidSymbols& invalid;
    CRowTextMap& annotations;
    CNoteStore& notes;
    CShownTexts& shown;
    CShownTexts& typed;
    CCellFormatStore& formats;

    /// The greatest row that any of them holds something for, formats aside; 0 when there is none.
    int LastRow() const;

    /// Empty rows come before firstRow; the caller has seen to it that the last row stays inside the table.
    void InsertRows(int firstRow, int count);
    /// Returns the symbols that stood nowhere but in the rows that went.
    std::vector<std::string> RemoveRows(int firstRow, int count);
    void Reorder(const std::vector<int>& newRowOf);
};

/// The permutation that moves the rows firstRow to firstRow + count - 1 so that they stand before the row that is
/// `before` now; empty when nothing would move.
std::vector<int> MoveOfBlock(int firstRow, int count, int before);

/// The permutation that brings rows into an order: order[i] is the row that goes where rows[i], rising, was.
std::vector<int> OrderOfRows(const std::vector<int>& rows, const std::vector<int>& order);

} // namespace vx
