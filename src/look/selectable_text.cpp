// SPDX-License-Identifier: MIT
#include "look/selectable_text.h"

#include "look/copy_menu.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMimeData>
#include <QTextDocumentFragment>
#include <QTextFrame>

#include <cmath>

namespace wrenfold {

SelectableText::SelectableText(QWidget *parent)
    : QTextEdit(parent)
{
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    // Not at the widget's edge: it is measured before it gets its size.
    setLineWrapMode(FixedPixelWidth);
    // Not by keyboard: that shows a caret, which blinks.
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    setFocusPolicy(Qt::ClickFocus);
    setFont(Fonts::body());
    viewport()->setAutoFillBackground(false);
    document()->setUndoRedoEnabled(false);
    document()->setDocumentMargin(0);
    applyTheme();
}

void SelectableText::setText(const QString &text)
{
    m_text = text;
    setPlainText(text);
    applyPadding();
    setAccessibleName(text);
}

void SelectableText::setPadding(const QMargins &padding)
{
    m_padding = padding;
    applyPadding();
}

void SelectableText::applyPadding()
{
    QTextFrameFormat format = document()->rootFrame()->frameFormat();
    format.setLeftMargin(m_padding.left());
    format.setTopMargin(m_padding.top());
    format.setRightMargin(m_padding.right());
    format.setBottomMargin(m_padding.bottom());
    document()->rootFrame()->setFrameFormat(format);
}

void SelectableText::setColors(Theme::Color ink, Theme::Color selection, Theme::Color selectedInk)
{
    m_ink = ink;
    m_selection = selection;
    m_selectedInk = selectedInk;
    applyTheme();
}

void SelectableText::applyTheme()
{
    const Theme &theme = Theme::current();
    QPalette colors = palette();
    colors.setColor(QPalette::Text, theme.*m_ink);
    colors.setColor(QPalette::Highlight, theme.*m_selection);
    colors.setColor(QPalette::HighlightedText, theme.*m_selectedInk);
    if (colors != palette())
        setPalette(colors);
}

QSize SelectableText::fittedTo(int width)
{
    setLineWrapColumnOrWidth(width);
    // A long text fills the width anyway, and takes long to be broken a second time.
    constexpr int longText = 1000;
    const int needed = m_text.size() > longText
                           ? width
                           : std::min(width, static_cast<int>(std::ceil(document()->idealWidth())));
    // Lines that begin on the right have to end where the widget does.
    setLineWrapColumnOrWidth(needed);
    return {needed, static_cast<int>(std::ceil(document()->size().height()))};
}

void SelectableText::copyText()
{
    if (textCursor().hasSelection())
        copy();
    else
        QGuiApplication::clipboard()->setText(m_text);
}

bool SelectableText::event(QEvent *event)
{
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::Polish)
        applyTheme();
    return QTextEdit::event(event);
}

void SelectableText::contextMenuEvent(QContextMenuEvent *event)
{
    // By keyboard in the middle of what is in sight of a long text.
    openCopyMenu(*this,
                 event->reason() == QContextMenuEvent::Keyboard
                     ? mapToGlobal(visibleRegion().boundingRect().center())
                     : event->globalPos(),
                 {[this] { copyText(); }, [this] { selectAll(); }});
}

QMimeData *SelectableText::createMimeDataFromSelection() const
{
    // No fonts and colours of ours in what is pasted.
    auto *plain = new QMimeData;
    plain->setText(textCursor().selection().toPlainText());
    return plain;
}

void SelectableText::focusInEvent(QFocusEvent *event)
{
    m_keyboardFocus.arrived(event->reason());
    QTextEdit::focusInEvent(event);
    viewport()->update();
}

void SelectableText::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Copy))
        copyText();
    else if (event->matches(QKeySequence::SelectAll))
        selectAll();
    else
        event->ignore(); // The rest is for what lies around.
}

void SelectableText::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}

} // namespace wrenfold
