// SPDX-License-Identifier: MIT
#include "views/link_question.h"

#include "inbox/link_opening.h"
#include "look/program_icon.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

namespace wrenfold {

LinkQuestion::LinkQuestion(const QUrl &link, std::function<void()> open, QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(QStringLiteral("元のメッセージを開く"));
    setWindowIcon(programIcon());
    setAttribute(Qt::WA_DeleteOnClose);
    setModal(true);

    const bool canOpen = open != nullptr;
    auto *question = new QLabel(canOpen ? QStringLiteral("このリンクを開きますか？")
                                        : QStringLiteral("このリンクは開けません。"),
                                this);
    question->setTextFormat(Qt::PlainText);
    auto *text = new QPlainTextEdit(link.toString(QUrl::FullyEncoded), this);
    text->setReadOnly(true);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    text->setTabChangesFocus(true);
    text->setWordWrapMode(QTextOption::WrapAnywhere);
    text->setAccessibleName(QStringLiteral("リンク"));

    auto *buttons = new QDialogButtonBox(this);
    if (canOpen) {
        connect(buttons->addButton(QStringLiteral("開く"), QDialogButtonBox::AcceptRole),
                &QPushButton::clicked, this, std::move(open));
    }
    QPushButton *cancel = buttons->addButton(
        canOpen ? QStringLiteral("キャンセル") : QStringLiteral("閉じる"), QDialogButtonBox::RejectRole);
    cancel->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    // Not every window manager gives the keyboard back to where the question came from.
    connect(this, &QDialog::rejected, parent->window(), &QWidget::activateWindow);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(question);
    layout->addWidget(text);
    layout->addWidget(buttons);
    resize(420, 180);
    cancel->setFocus(); // Not earlier: laying out the buttons takes the focus away.
}

void openForeignLink(const QUrl &link, const std::function<void()> &open, QWidget *parent)
{
    switch (linkOpening(link)) {
    case LinkOpening::AtOnce:
        open();
        break;
    case LinkOpening::AskFirst:
        (new LinkQuestion(link, open, parent))->show();
        break;
    case LinkOpening::Never:
        (new LinkQuestion(link, {}, parent))->show();
        break;
    }
}

} // namespace wrenfold
