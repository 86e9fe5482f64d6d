#pragma once

#include "widgets/number_format.h"

#include <QAbstractSpinBox>

#include <optional>

/// A numeric edit with arrows. Its value is its own and optional: an edit that stands for several objects that
/// disagree is empty, and typing any number into it, also one of theirs, is a change.
///
/// Up, Down, Page Up, Page Down, the wheel (while the edit has the focus) and the arrows change the value by steps;
/// so does dragging from an arrow to the left or right. Sums ("120/2", "+10") count when the editing ends.
class CSuperEdit : public QAbstractSpinBox {
    Q_OBJECT

public:
    explicit CSuperEdit(QWidget* parent = nullptr);

    /// The range and step are 0 to 100 and 1 at first. Swapped limits are put right, a step that is not above 0
    /// becomes 1, and numbers that are not finite are refused as a whole. A value outside the new range is moved in.
    void set_range(double min, double max, double step);
    double get_min() const { return m_min; }
    double get_max() const { return m_max; }
    double get_step() const { return m_step; }

    /// How the value is shown: exactly one printf conversion of %f, %e or %g. Another text counts as "%g".
    /// What is typed is rounded to the decimals of an %f conversion; values set by set_pos() are not.
    void set_format_string(const QString& printf_format);
    /// From now on what is typed is cut to those decimals instead of rounded.
    void set_truncating(bool truncating) { m_is_truncating = truncating; }

    /// From now on a sum that changes what is there ("+10") is told by changed_by() instead of being worked out here: for
    /// an edit that stands for several objects.
    void set_telling_changes(bool telling) { m_tells_changes = telling; }

    /// Shows a value, held to the range. A number that is not finite is refused. The text that the user is typing is
    /// left alone when it stands for this very value. Returns whether the value changed.
    bool set_pos(double pos);
    /// Shows nothing. Returns whether there was a value.
    bool set_empty();
    /// The value, always within the range. An empty edit answers 0, or the limit next to it where 0 is outside.
    double get_pos() const;
    /// No value while the edit is empty.
    std::optional<double> value() const { return m_value; }

    /// The user typed, and has not ended the editing yet.
    bool is_typing() const { return m_is_typing; }

    void stepBy(int steps) override;
    void clear() override;
    QValidator::State validate(QString& input, int& pos) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// Any change of the value, whoever made it.
    void value_changed();
    /// The user typed a text that is a number, or stepped, or ended the editing with a sum. `pos` is get_pos(): held to
    /// the range. Texts on the way to a number ("-", "1e", nothing) are not reported; when the editing ends with one, the
    /// last value is shown again.
    void text_changed_by_user(double pos);
    /// Enter, or the focus left the edit, after the user typed a change of what is there; before entered() and
    /// editing_finished(). Only for an edit that tells changes.
    void changed_by(const tarn::Sum& sum, bool by_enter);
    /// Enter, before editing_finished(); not in an empty edit. `pos` is get_pos().
    void entered(double pos);
    /// Enter, or the focus left the edit. The value is shown in its format by then.
    void editing_finished();

protected:
    StepEnabled stepEnabled() const override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    struct Drag {
        int from_x = 0;
        double from_pos = 0;
        bool is_moving = false;
    };

    double held(double pos) const;
    bool replace_value(std::optional<double> value);
    void take_step_from(double pos, double steps);
    bool shows_same(double pos) const;
    void show_value();
    void on_text_edited(const QString& text);
    void take_typed(double typed);
    bool take_sum(bool by_enter); ///< whether it was told as a change
    void commit();
    QSize size_for(int digits) const;

    std::optional<double> m_value;
    double m_min = 0;
    double m_max = 100;
    double m_step = 1;
    tarn::NumberFormat m_format;
    std::optional<Drag> m_drag;
    bool m_is_typing = false;
    bool m_is_truncating = false;
    bool m_tells_changes = false;
    std::optional<tarn::Sum> m_sum; ///< what is typed, while it is more than a number
};
