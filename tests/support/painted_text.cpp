// SPDX-License-Identifier: MIT
#include "support/painted_text.h"

#include <QPaintEngine>
#include <QPainter>
#include <QRegularExpression>
#include <QWidget>

namespace wrenfold {

namespace {

class TextRecorder : public QPaintEngine
{
public:
    TextRecorder()
        : QPaintEngine(QPaintEngine::AllFeatures)
    {
    }

    bool begin(QPaintDevice *) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState &) override {}
    void drawPixmap(const QRectF &, const QPixmap &, const QRectF &) override {}
    void drawPath(const QPainterPath &) override {}
    void drawPolygon(const QPointF *, int, PolygonDrawMode) override {}
    void drawTextItem(const QPointF &, const QTextItem &item) override { m_text += item.text(); }
    [[nodiscard]] Type type() const override { return QPaintEngine::User; }

    [[nodiscard]] const QString &text() const { return m_text; }

private:
    QString m_text;
};

class RecordingDevice : public QPaintDevice
{
public:
    explicit RecordingDevice(QSize size)
        : m_size(size)
    {
    }

    [[nodiscard]] QPaintEngine *paintEngine() const override { return &m_recorder; }
    [[nodiscard]] const QString &text() const { return m_recorder.text(); }

protected:
    [[nodiscard]] int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmWidth:
            return m_size.width();
        case PdmHeight:
            return m_size.height();
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return static_cast<int>(devicePixelRatioFScale());
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return 96;
        case PdmDepth:
            return 32;
        default:
            return QPaintDevice::metric(metric);
        }
    }

private:
    QSize m_size;
    mutable TextRecorder m_recorder;
};

} // namespace

QString paintedText(QWidget &widget)
{
    RecordingDevice device(widget.size());
    widget.render(&device);
    QString text = device.text();
    return text.remove(QRegularExpression(QStringLiteral("[\\x{2066}-\\x{2069}]")));
}

} // namespace wrenfold
