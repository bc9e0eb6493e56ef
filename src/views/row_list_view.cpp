// SPDX-License-Identifier: MIT
#include "views/row_list_view.h"

#include "look/overlay_scroll_bar.h"
#include "look/tab_order.h"
#include "look/theme.h"
#include "views/panel_row_widget.h"
#include "views/row_accessibility.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace wrenfold {

RowListView::RowListView(RowFactory factory, QWidget *parent)
    : QAbstractScrollArea(parent)
    , m_factory(std::move(factory))
    , m_tops({0})
{
    installRowAccessibility();
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    viewport()->setAutoFillBackground(false);
    verticalScrollBar()->setSingleStep(Metrics::rowHeight);
    new OverlayScrollBar(verticalScrollBar(), this);
    m_slide.setStartValue(1.0);
    m_slide.setEndValue(0.0);
    m_slide.setEasingCurve(QEasingCurve::InOutQuad);
    connect(&m_slide, &QVariantAnimation::valueChanged, this, &RowListView::placeRows);
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget *, QWidget *focused) { noteFocus(focused); });
}

RowListView::~RowListView()
{
    // The rows outlive this class's own part of the object, and the focus still moves among them.
    disconnect(qApp, nullptr, this, nullptr);
}

void RowListView::setRows(QList<PanelRow> rows)
{
    if (rows == m_rows)
        return;
    const qsizetype focusedBefore = focusedIndex();
    const PanelRowWidget *focusedWidget =
        focusedBefore < 0 ? nullptr : m_shown.value(m_rows[focusedBefore].identity());
    const Qt::FocusReason reason =
        focusedWidget && focusedWidget->showsFocusRing() ? Qt::TabFocusReason : Qt::MouseFocusReason;

    beginSlide();
    m_rows = std::move(rows); // Not shared with the caller: looking at a row would copy them all.
    m_tops.resize(1);
    m_tops.reserve(m_rows.size() + 1);
    for (const PanelRow &row : std::as_const(m_rows))
        m_tops.append(m_tops.last() + row.height());

    // The Tab key passes over a list in which nothing takes the focus.
    setFocusPolicy(focusableFrom(0, 1) < 0 ? Qt::NoFocus : Qt::TabFocus);
    updateScrollRange();
    if (focusedBefore >= 0 && indexOf(m_lastFocused) < 0) {
        qsizetype successor = focusableFrom(std::min(focusedBefore, m_rows.size() - 1), 1);
        if (successor < 0)
            successor = focusableFrom(m_rows.size() - 1, -1);
        if (successor >= 0)
            focusIndex(successor, reason);
    }
    placeRows();
}

void RowListView::beginSlide()
{
    m_slide.stop();
    m_slideTops.clear();
    const bool isDragging = std::any_of(m_shown.begin(), m_shown.end(), [](const PanelRowWidget *widget) {
        return widget->row().isDragging;
    });
    if (!isDragging || Durations::motion().count() == 0)
        return;
    for (auto it = m_shown.begin(); it != m_shown.end(); ++it)
        m_slideTops.insert(it.key(), it.value()->y() + verticalScrollBar()->value());
    m_slide.setDuration(int(Durations::motion().count()));
    m_slide.start();
}

std::optional<QRect> RowListView::rowFrame(const PanelRow::Identity &identity) const
{
    const qsizetype index = indexOf(identity);
    return index < 0 ? std::nullopt : std::optional(frameOf(index));
}

QRect RowListView::frameOf(qsizetype index) const
{
    return {0, m_tops[index] - verticalScrollBar()->value(), viewport()->width(), m_rows[index].height()};
}

void RowListView::scrollTo(qsizetype index)
{
    const int scroll = verticalScrollBar()->value();
    if (m_tops[index] < scroll)
        verticalScrollBar()->setValue(m_tops[index]);
    else if (m_tops[index + 1] > scroll + viewport()->height())
        verticalScrollBar()->setValue(m_tops[index + 1] - viewport()->height());
}

void RowListView::reveal(const PanelRow::Identity &identity)
{
    if (const qsizetype index = indexOf(identity); index >= 0)
        scrollTo(index);
}

void RowListView::focusRow(const PanelRow::Identity &identity, Qt::FocusReason reason)
{
    if (const qsizetype index = indexOf(identity); index >= 0)
        focusIndex(index, reason);
}

void RowListView::focusIndex(qsizetype index, Qt::FocusReason reason)
{
    m_lastFocused = m_rows[index].identity();
    // Before scrolling, which may put away the widget that has the focus now.
    placeRow(index);
    m_shown.value(m_lastFocused)->setFocus(reason);
    scrollTo(index);
}

void RowListView::focusInEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusInEvent(event);
    qsizetype index = indexOf(m_lastFocused);
    if (index < 0)
        index = focusableFrom(rowAt(verticalScrollBar()->value()), 1);
    if (index >= 0)
        focusIndex(index, event->reason());
}

bool RowListView::focusNextPrevChild(bool next)
{
    return focusNextInTabOrder(*this, next, [this](const QWidget &widget) { return isAncestorOf(&widget); });
}

void RowListView::keyPressEvent(QKeyEvent *event)
{
    if ((event->modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) {
        event->ignore();
        return;
    }
    const qsizetype current = focusedIndex();
    const int page = viewport()->height();
    qsizetype target = -1;
    switch (event->key()) {
    case Qt::Key_Up:
        target = current < 0 ? focusableFrom(m_rows.size() - 1, -1) : focusableFrom(current - 1, -1);
        break;
    case Qt::Key_Down:
        target = focusableFrom(current + 1, 1);
        break;
    case Qt::Key_Home:
        target = focusableFrom(0, 1);
        break;
    case Qt::Key_End:
        target = focusableFrom(m_rows.size() - 1, -1);
        break;
    case Qt::Key_PageUp:
        target = focusableFrom(rowAt(m_tops[std::max<qsizetype>(current, 0)] - page), 1);
        break;
    case Qt::Key_PageDown:
        target = focusableFrom(rowAt(m_tops[std::max<qsizetype>(current, 0)] + page), -1);
        break;
    default:
        event->ignore();
        return;
    }
    // At either end, what lies before the first row that takes the focus comes into sight too.
    if (target < 0 && event->key() == Qt::Key_Up)
        verticalScrollBar()->setValue(0);
    if (target >= 0)
        focusIndex(target, Qt::TabFocusReason);
}

void RowListView::noteFocus(QWidget *focused)
{
    for (auto it = m_shown.begin(); focused && it != m_shown.end(); ++it) {
        if (it.value() == focused || it.value()->isAncestorOf(focused))
            m_lastFocused = it.key();
    }
}

void RowListView::resizeEvent(QResizeEvent *event)
{
    QAbstractScrollArea::resizeEvent(event);
    updateScrollRange();
    placeRows();
}

void RowListView::scrollContentsBy(int, int)
{
    placeRows();
}

void RowListView::updateScrollRange()
{
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setRange(0, std::max(0, m_tops.last() - viewport()->height()));
}

void RowListView::placeRows()
{
    const int scroll = verticalScrollBar()->value();
    const qsizetype first = rowAt(scroll);
    const qsizetype last = rowAt(scroll + viewport()->height() - 1);

    QSet<PanelRow::Identity> wanted;
    for (qsizetype i = first; i >= 0 && i <= last; ++i)
        wanted.insert(m_rows[i].identity());
    // The row that is typed into keeps its widget, wherever it has been scrolled to.
    if (const qsizetype focused = focusedIndex(); focused >= 0)
        wanted.insert(m_rows[focused].identity());

    const QList<PanelRow::Identity> shown = m_shown.keys();
    for (const PanelRow::Identity &identity : shown) {
        // The one that is dragged too: Qt forgets the press on a widget that is hidden, and its release with it.
        const bool isHeld = m_shown.value(identity)->row().isDragging && indexOf(identity) >= 0;
        if (isHeld)
            placeRow(indexOf(identity));
        else if (!wanted.contains(identity))
            retire(identity);
    }
    for (qsizetype i = first; i >= 0 && i <= last; ++i)
        placeRow(i);
    if (const qsizetype focused = focusedIndex(); focused >= 0)
        placeRow(focused);
}

void RowListView::placeRow(qsizetype index)
{
    const PanelRow &row = m_rows[index];
    PanelRowWidget *&widget = m_shown[row.identity()];
    if (!widget)
        widget = takeWidget(row.kind);
    widget->setRow(row);
    const int top = m_slide.state() == QAbstractAnimation::Running
                        ? m_slideTops.value(row.identity(), m_tops[index])
                        : m_tops[index];
    const double share = m_slide.currentValue().toDouble();
    widget->setGeometry(frameOf(index).translated(0, qRound(share * (top - m_tops[index]))));
    widget->show();
}

PanelRowWidget *RowListView::takeWidget(PanelRow::Kind kind)
{
    QList<PanelRowWidget *> &spare = m_spare[kind];
    return spare.isEmpty() ? m_factory(kind, viewport()) : spare.takeLast();
}

void RowListView::retire(const PanelRow::Identity &identity)
{
    PanelRowWidget *widget = m_shown.take(identity);
    widget->hide();
    m_spare[identity.kind].append(widget);
}

qsizetype RowListView::indexOf(const PanelRow::Identity &identity) const
{
    const auto found = std::find_if(m_rows.begin(), m_rows.end(),
                                    [&identity](const PanelRow &row) { return row.identity() == identity; });
    return found == m_rows.end() ? -1 : found - m_rows.begin();
}

qsizetype RowListView::rowAt(int y) const
{
    const auto behind = std::upper_bound(m_tops.begin(), m_tops.end(), y);
    return m_rows.isEmpty() ? -1 : std::clamp<qsizetype>(behind - m_tops.begin() - 1, 0, m_rows.size() - 1);
}

qsizetype RowListView::focusedIndex() const
{
    // The window's, so that a half-typed text stays where it is while another window is in front.
    const QWidget *focused = window()->focusWidget();
    for (auto it = m_shown.begin(); focused && it != m_shown.end(); ++it) {
        if (it.value() == focused || it.value()->isAncestorOf(focused))
            return indexOf(it.key());
    }
    return -1;
}

qsizetype RowListView::focusableFrom(qsizetype start, qsizetype step) const
{
    for (qsizetype i = start; i >= 0 && i < m_rows.size(); i += step) {
        if (m_rows[i].takesFocus())
            return i;
    }
    return -1;
}

} // namespace wrenfold
