#pragma once

#include <QtGlobal>

#include <vector>

class CTVar;

namespace tarn {

/// The columns of a table of keys, in the text of a spreadsheet too.
enum class KeyColumn { Time, Object, Variable, Content, Ease };
constexpr int key_column_count = 5;

/// A key by its variable and its index there.
struct KeyPlace {
    CTVar* variable = nullptr;
    qsizetype key = 0;

    bool operator==(const KeyPlace&) const = default;
    float time() const;
};

/// Keys of many variables as one list of rows. By time, object and variable the rows are found when somebody asks for
/// them, at a cost that hardly grows with the number of keys; by value and ease they are sorted once.
class KeyRows {
public:
    /// Sorted by what a column says. The keys as they are now. Has to be called again when keys or variables change.
    void set(std::vector<CTVar*> variables, KeyColumn order, bool descending);
    qsizetype size() const { return m_size; }
    /// Without a variable when keys went since set().
    KeyPlace at(qsizetype row) const;
    /// The row of a key; -1 when there is no such key.
    qsizetype row_of(const CTVar* variable, float time) const;

private:
    void sort_keys();
    qsizetype keys_before(float time) const;
    qsizetype keys_until(float time) const;
    void find_block(qsizetype first) const;
    KeyPlace in_ascending(qsizetype row) const;

    std::vector<CTVar*> m_variables;
    std::vector<qsizetype> m_begins; ///< rows before each variable's keys, where these follow each other
    std::vector<KeyPlace> m_sorted;  ///< by value or ease
    qsizetype m_size = 0;
    KeyColumn m_order = KeyColumn::Time;
    bool m_descending = false;
    mutable std::vector<KeyPlace> m_block; ///< rows by time that were asked for last
    mutable qsizetype m_block_begin = -1;
};

} // namespace tarn
