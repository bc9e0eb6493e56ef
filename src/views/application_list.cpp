// SPDX-License-Identifier: MIT
#include "views/application_list.h"

#include "look/plain_text.h"
#include "look/symbols.h"
#include "look/theme.h"
#include "views/application_icon.h"

#include <QCollator>

#include <algorithm>

namespace wrenfold {
namespace {

constexpr int keptIcons = 256;
// No window of ours shows more at once.
constexpr int rowsInSight = 64;
constexpr int lettersInSight = 512;

} // namespace

QString searchKey(const QString &text)
{
    return text.normalized(QString::NormalizationForm_KC).toCaseFolded();
}

ApplicationList::ApplicationList(QObject *parent)
    : QAbstractListModel(parent)
    , m_icons(keptIcons)
{
    m_reading.setSingleShot(true);
    connect(&m_reading, &QTimer::timeout, this, &ApplicationList::readIcon);
}

void ApplicationList::setEntries(const QList<DesktopEntry> &entries)
{
    beginResetModel();
    m_icons.clear();
    m_wanted.clear();
    m_rows.clear();
    QHash<QString, int> namesakes;
    for (const DesktopEntry &entry : entries) {
        if (!entry.isDisplayed)
            continue;
        m_rows.append({entry, entry.name});
        ++namesakes[entry.name];
    }
    for (Row &row : m_rows) {
        if (namesakes.value(row.entry.name) > 1)
            row.label += QStringLiteral(" — ") + row.entry.id;
    }
    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::stable_sort(m_rows.begin(), m_rows.end(),
                     [&](const Row &a, const Row &b) { return collator.compare(a.label, b.label) < 0; });
    endResetModel();
}

int ApplicationList::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant ApplicationList::data(const QModelIndex &index, int role) const
{
    const auto &[entry, label] = m_rows[index.row()];
    switch (role) {
    case Qt::DisplayRole:
        return label;
    case Qt::ToolTipRole:
        return plainToolTip(entry.name + QLatin1Char('\n') + entry.id);
    case Qt::AccessibleTextRole:
        return entry.name;
    case Qt::AccessibleDescriptionRole:
        return entry.id;
    case Qt::DecorationRole:
        return icon(index.row());
    case SearchKeyRole:
        return searchKey(entry.name + QLatin1Char('\n') + entry.id);
    case PathRole:
        return entry.path;
    default:
        return {};
    }
}

QVariant ApplicationList::icon(int row) const
{
    if (const QIcon *icon = m_icons.object(row))
        return *icon;
    // Scrolled fast, rows are soon out of sight again: the latest come first, and the oldest not at all.
    m_wanted.removeOne(row);
    m_wanted.append(row);
    if (m_wanted.size() > rowsInSight)
        m_wanted.removeFirst();
    m_reading.start();
    return {};
}

void ApplicationList::readIcon()
{
    if (m_wanted.isEmpty())
        return;
    const int row = m_wanted.takeLast();
    m_icons.insert(row, new QIcon(applicationIcon(m_rows[row].entry.path)));
    if (!m_wanted.isEmpty())
        m_reading.start();
    Q_EMIT dataChanged(index(row), index(row), {Qt::DecorationRole});
}

QSize ApplicationDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &) const
{
    // No width of its own: a long name would make every row as wide, and be cut off instead of elided.
    return {0, std::max(Metrics::rowHeight, option.fontMetrics.height() + Metrics::rowSpacing)};
}

void ApplicationDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    option->text = isolated(oneLine(index.data().toString().left(lettersInSight)));
    option->features |= QStyleOptionViewItem::HasDecoration;
    const QVariant icon = index.data(Qt::DecorationRole);
    if (icon.isValid() && option->icon.isNull()) { // Read, but nothing that can be shown.
        const QColor ink = option->state & QStyle::State_Selected
                               ? option->palette.color(QPalette::HighlightedText)
                               : Theme::current().secondaryInk;
        option->icon = Symbols::pixmap(QStringLiteral("app"), ink, Metrics::applicationIconSize,
                                       option->widget->devicePixelRatio());
    }
    option->decorationSize = {Metrics::applicationIconSize, Metrics::applicationIconSize};
}

} // namespace wrenfold
