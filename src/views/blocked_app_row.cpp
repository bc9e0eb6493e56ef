// SPDX-License-Identifier: MIT
#include "views/blocked_app_row.h"

#include "look/icon_button.h"
#include "look/symbol_icon.h"
#include "look/text_label.h"
#include "model/focus_store.h"
#include "views/application_icon.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>

namespace wrenfold {

/// The application's icon, read when it is first painted: of a long list only those in sight are. Without one the
/// symbol of an application, read out as the name.
class BlockedAppRow::Icon : public QLabel
{
public:
    using QLabel::QLabel;

    void setApp(const BlockedApp &app)
    {
        m_app = app;
        m_icon = {};
        update();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        if (m_icon.isNull())
            read();
        QPainter painter(this);
        m_icon.paint(&painter, rect()); // Not the label's pixmap, which is of one theme and one scale.
    }

private:
    void read()
    {
        m_icon = applicationIcon(m_app.path.value_or(QString()));
        setAccessibleName(m_icon.isNull() ? m_app.name : QString());
        if (m_icon.isNull())
            m_icon = symbolIcon(QStringLiteral("app"));
        setPixmap(m_icon.pixmap(size())); // Makes it a picture for assistive technology.
    }

    BlockedApp m_app;
    QIcon m_icon;
};

BlockedAppRow::BlockedAppRow(FocusStore &store, QWidget *parent)
    : QWidget(parent)
    , m_icon(new Icon(this))
    , m_name(new TextLabel({}, this))
    , m_remove(new IconButton(QStringLiteral("minus.circle"), QStringLiteral("削除"), this))
{
    m_icon->setFixedSize(Metrics::applicationIconSize, Metrics::applicationIconSize);
    m_name->setFont({}); // The desktop's, as around it.
    connect(m_remove, &IconButton::clicked, this, [this, &store] { store.removeBlockedApp(m_app); });
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(Metrics::settingsSpacing);
    layout->addWidget(m_icon);
    layout->addWidget(m_name, 1);
    layout->addWidget(m_remove);
}

void BlockedAppRow::setApp(const BlockedApp &app)
{
    if (app == m_app)
        return;
    m_app = app;
    m_icon->setApp(app);
    const QString name = app.name.trimmed().isEmpty() ? app.id : app.name;
    m_name->setText(name);
    m_remove->setAccessibleDescription(name);
}

} // namespace wrenfold
