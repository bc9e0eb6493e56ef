// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QSet>
#include <QUrl>

class QItemSelection;
class QLabel;
class QListView;
class QPushButton;
class QSortFilterProxyModel;

namespace wrenfold {

class ApplicationList;
class InstalledApplications;
class TextField;

/// Asks which applications to block: several of those that are installed, found by typing, or files from elsewhere.
/// Show it with open(). What is chosen stays so while a search hides it.
class ApplicationChooser : public QDialog
{
    Q_OBJECT

public:
    /// `applications` outlive the dialog.
    ApplicationChooser(InstalledApplications &applications, QWidget *parent);
    ~ApplicationChooser() override;

Q_SIGNALS:
    /// The user confirmed these .desktop files, at least one, in the list's order. The dialog has closed. It closes
    /// without a word when the user does not.
    void chosen(const QList<QUrl> &files);

protected:
    /// Keys that move in the list do so from the search field, too.
    bool eventFilter(QObject *watched, QEvent *event) override;
    /// Begins anew, and looks for applications that have come or gone.
    void showEvent(QShowEvent *event) override;

private:
    void makeList();
    void makeLayout();
    void load();
    void filter(const QString &text);
    void followSelection(const QItemSelection &selected, const QItemSelection &deselected);
    void showState();
    /// The one that a search has found; invalid if it has found none, or several.
    [[nodiscard]] QModelIndex onlyFound() const;
    void add();
    void browse();
    void finish(const QList<QUrl> &files);

    InstalledApplications &m_applications;
    ApplicationList *m_list;
    QSortFilterProxyModel *m_found;
    TextField *m_search;
    QListView *m_view;
    QLabel *m_note;  ///< Over the list, when it is empty.
    QLabel *m_count; ///< How many are chosen.
    QPushButton *m_add = nullptr;
    QSet<QString> m_chosen; ///< By path, in sight or not.
    bool m_isFiltering = false;
};

} // namespace wrenfold
