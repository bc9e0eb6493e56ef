// SPDX-License-Identifier: MIT
#pragma once

#include "views/panel_rows.h"

#include <QAbstractScrollArea>
#include <QHash>
#include <QVariantAnimation>

#include <functional>

namespace wrenfold {

class PanelRowWidget;

/// The panel's scrolling list. It has widgets for the rows in sight only and hands them on as the list
/// scrolls and changes; a row that stays in sight keeps its widget, and so its focus and its half-typed text.
///
/// While a row is dragged, those that make way for it slide to their new places.
///
/// One stop of the Tab key; inside, the arrow keys, Home, End, Page Up and Page Down go from row to row. When
/// the focused row leaves the list, the row that took its place has the focus.
class RowListView : public QAbstractScrollArea
{
    Q_OBJECT

public:
    /// Makes an empty widget for rows of a kind, as a child of the widget given.
    using RowFactory = std::function<PanelRowWidget *(PanelRow::Kind, QWidget *)>;

    explicit RowListView(RowFactory factory, QWidget *parent = nullptr);
    ~RowListView() override;

    /// Keeps room for the scroll bar beside the rows; it lies over them at first.
    void setScrollBarMargin(int width) { setViewportMargins(0, 0, width, 0); }

    void setRows(QList<PanelRow> rows);
    [[nodiscard]] const QList<PanelRow> &rows() const { return m_rows; }

    /// The row's place in the viewport, if the list holds it; beside what is in sight when it is scrolled away.
    [[nodiscard]] std::optional<QRect> rowFrame(const PanelRow::Identity &identity) const;

    [[nodiscard]] bool contains(const PanelRow::Identity &identity) const { return indexOf(identity) >= 0; }

    /// Scrolls the row into sight, if the list holds it.
    void reveal(const PanelRow::Identity &identity);

    /// The same, and gives it the keyboard focus.
    void focusRow(const PanelRow::Identity &identity, Qt::FocusReason reason);

protected:
    void focusInEvent(QFocusEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    void updateScrollRange();
    void beginSlide();
    void placeRows();
    void placeRow(qsizetype index);
    PanelRowWidget *takeWidget(PanelRow::Kind kind);
    void retire(const PanelRow::Identity &identity);

    [[nodiscard]] QRect frameOf(qsizetype index) const;
    [[nodiscard]] qsizetype indexOf(const PanelRow::Identity &identity) const;
    [[nodiscard]] qsizetype rowAt(int y) const; ///< `y` counts from the top of the list.
    [[nodiscard]] qsizetype focusedIndex() const;
    /// The first row from `start` on in steps of `step` that takes the focus, or -1.
    [[nodiscard]] qsizetype focusableFrom(qsizetype start, qsizetype step) const;
    void focusIndex(qsizetype index, Qt::FocusReason reason);
    void scrollTo(qsizetype index);

    void noteFocus(QWidget *focused);

    RowFactory m_factory;
    QList<PanelRow> m_rows;
    QList<int> m_tops; ///< Of each row, and of the end, from the top of the list.
    QHash<PanelRow::Identity, PanelRowWidget *> m_shown;
    QVariantAnimation m_slide;                  ///< From 1, where the rows were, to 0, where they belong.
    QHash<PanelRow::Identity, int> m_slideTops; ///< Where they were, from the top of the list.
    QHash<PanelRow::Kind, QList<PanelRowWidget *>> m_spare;
    PanelRow::Identity m_lastFocused = {PanelRow::Kind::Task, {}};
};

} // namespace wrenfold
