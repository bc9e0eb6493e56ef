// SPDX-License-Identifier: MIT
#include "views/application_chooser.h"

#include "look/text_field.h"
#include "look/theme.h"
#include "look/utility_window.h"
#include "platform/installed_applications.h"
#include "views/application_list.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QScreen>
#include <QSortFilterProxyModel>
#include <QStandardPaths>
#include <QVBoxLayout>

namespace wrenfold {
namespace {

/// The first applications folder there is that is not the user's own.
QString systemApplicationsFolder()
{
    const QString own = QStandardPaths::writableLocation(QStandardPaths::ApplicationsLocation);
    for (const QString &folder : QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation)) {
        if (folder != own && QFileInfo(folder).isDir())
            return folder;
    }
    return {};
}

bool movesInList(const QKeyEvent &key)
{
    return key.key() == Qt::Key_Up || key.key() == Qt::Key_Down || key.key() == Qt::Key_PageUp ||
           key.key() == Qt::Key_PageDown;
}

QString pathOf(const QModelIndex &index)
{
    return index.data(ApplicationList::PathRole).toString();
}

} // namespace

ApplicationChooser::ApplicationChooser(InstalledApplications &applications, QWidget *parent)
    : QDialog(parent)
    , m_applications(applications)
    , m_list(new ApplicationList(this))
    , m_found(new QSortFilterProxyModel(this))
    , m_search(new TextField(QStringLiteral("アプリを検索"), this))
    , m_view(new QListView(this))
    , m_note(new QLabel(m_view->viewport()))
    , m_count(new QLabel(this))
{
    setWindowTitle(QStringLiteral("ブロックするアプリを選択"));
    m_search->setFrame(true);
    m_search->installEventFilter(this);
    connect(m_search, &QLineEdit::textChanged, this, &ApplicationChooser::filter);
    makeList();
    makeLayout();
    connect(&m_applications, &InstalledApplications::loaded, this, &ApplicationChooser::load);
    resize(Metrics::chooserWidth, Metrics::chooserHeight);
}

ApplicationChooser::~ApplicationChooser() = default;

bool ApplicationChooser::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_search && event->type() == QEvent::KeyPress && !m_search->isComposing() &&
        movesInList(*static_cast<QKeyEvent *>(event))) {
        QCoreApplication::sendEvent(m_view, event);
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void ApplicationChooser::showEvent(QShowEvent *event)
{
    if (!event->spontaneous()) {
        resize(size().boundedTo(screen()->availableSize() - windowFrame));
        m_chosen.clear();
        m_search->setCommittedText({});
        m_search->setFocus();
        load();
        m_applications.refresh();
    }
    QDialog::showEvent(event);
}

void ApplicationChooser::makeList()
{
    m_found->setSourceModel(m_list);
    m_found->setFilterRole(ApplicationList::SearchKeyRole);
    m_view->setModel(m_found);
    m_view->setItemDelegate(new ApplicationDelegate(m_view));
    m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_view->setUniformItemSizes(true);
    m_view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_view->setAccessibleName(QStringLiteral("アプリ"));
    connect(m_view, &QListView::doubleClicked, this, &ApplicationChooser::add);
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &ApplicationChooser::followSelection);

    auto *layout = new QVBoxLayout(m_view->viewport());
    layout->addWidget(m_note, 0, Qt::AlignCenter);
    m_note->setForegroundRole(QPalette::PlaceholderText);
    m_note->setAttribute(Qt::WA_TransparentForMouseEvents);
}

void ApplicationChooser::makeLayout()
{
    auto *browse = new QPushButton(QStringLiteral("ファイルを選ぶ..."), this);
    connect(browse, &QPushButton::clicked, this, &ApplicationChooser::browse);
    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(QStringLiteral("キャンセル"), QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::rejected, this, &ApplicationChooser::reject);
    m_add = buttons->addButton(QStringLiteral("追加"), QDialogButtonBox::AcceptRole);
    m_add->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &ApplicationChooser::add);
    m_count->setFont(Fonts::small());

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_search);
    layout->addWidget(m_view);
    layout->addWidget(m_count);
    auto *bottom = new QHBoxLayout;
    bottom->addWidget(browse);
    bottom->addWidget(buttons, 1);
    layout->addLayout(bottom);
}

void ApplicationChooser::load()
{
    m_list->setEntries(m_applications.entries().entries());
    QSet<QString> chosen;
    for (int row = 0; row < m_list->rowCount(); ++row) {
        const QString path = pathOf(m_list->index(row));
        if (m_chosen.contains(path))
            chosen.insert(path);
    }
    m_chosen = chosen;
    filter(m_search->text());
}

void ApplicationChooser::filter(const QString &text)
{
    // Rows that go out of sight lose their selection with the view, not with us.
    m_isFiltering = true;
    m_found->setFilterFixedString(searchKey(text));
    QItemSelection selection;
    for (int row = 0; row < m_found->rowCount(); ++row) {
        const QModelIndex index = m_found->index(row, 0);
        if (m_chosen.contains(pathOf(index)))
            selection.select(index, index);
    }
    m_view->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    m_view->selectionModel()->clearCurrentIndex(); // The keys begin at the top of what is found.
    m_view->scrollToTop();
    m_isFiltering = false;
    showState();
}

void ApplicationChooser::followSelection(const QItemSelection &selected, const QItemSelection &deselected)
{
    if (m_isFiltering)
        return;
    for (const QModelIndex &index : deselected.indexes())
        m_chosen.remove(pathOf(index));
    for (const QModelIndex &index : selected.indexes())
        m_chosen.insert(pathOf(index));
    showState();
}

void ApplicationChooser::showState()
{
    m_add->setEnabled(!m_chosen.isEmpty() || onlyFound().isValid());
    m_count->setText(m_chosen.isEmpty() ? QString() : QStringLiteral("%1個を選択中").arg(m_chosen.size()));
    m_note->setText(m_applications.isLoaded() ? QStringLiteral("見つかりません")
                                              : QStringLiteral("読み込み中..."));
    m_note->setVisible(m_found->rowCount() == 0);
}

QModelIndex ApplicationChooser::onlyFound() const
{
    return !m_search->text().isEmpty() && m_found->rowCount() == 1 ? m_found->index(0, 0) : QModelIndex();
}

void ApplicationChooser::add()
{
    if (m_chosen.isEmpty() && onlyFound().isValid())
        m_chosen.insert(pathOf(onlyFound()));
    QList<QUrl> files;
    for (int row = 0; row < m_list->rowCount(); ++row) {
        const QString path = pathOf(m_list->index(row));
        if (m_chosen.contains(path))
            files.append(QUrl::fromLocalFile(path));
    }
    finish(files);
}

void ApplicationChooser::browse()
{
    // The desktop's own dialog, if it has one: it speaks the user's language and knows the user's places.
    auto *dialog = new QFileDialog(this, windowTitle(), systemApplicationsFolder(),
                                   QStringLiteral("アプリ (*.desktop)"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFiles);
    // An application is known by where its entry lies, not by where a link leads.
    dialog->setOption(QFileDialog::DontResolveSymlinks);
    // Qt's own dialog does not send urlsSelected().
    connect(dialog, &QFileDialog::accepted, this, [this, dialog] {
        QList<QUrl> files = dialog->selectedUrls();
        // Typed, a name gets past the filter.
        files.removeIf([](const QUrl &file) { return !file.path().endsWith(QLatin1String(".desktop")); });
        finish(files);
    });
    dialog->open();
}

void ApplicationChooser::finish(const QList<QUrl> &files)
{
    if (files.isEmpty())
        return;
    accept();
    Q_EMIT chosen(files);
}

} // namespace wrenfold
