// SPDX-License-Identifier: MIT
#include "ai/chat_transcript.h"
#include "look/theme.h"
#include "support/budget.h"
#include "support/painting_time.h"

#include <QApplication>
#include <QScrollBar>
#include <QWheelEvent>

#include <benchmark/benchmark.h>

namespace {

using namespace wrenfold;

/// A transcript as wide as the chat's, with this many messages of different lengths.
class TranscriptInWindow
{
public:
    explicit TranscriptInWindow(int count)
    {
        m_transcript.resize(Metrics::chatWidth - 2 * Metrics::panelPadding, 400);
        for (int i = 0; i < count; ++i)
            add(QStringLiteral("まず見積書の差し替えから始めましょう。 %1 ").arg(i).repeated(1 + i % 7));
        m_transcript.setMessages(m_messages);
        m_transcript.show();
        QCoreApplication::processEvents();
    }

    void add(const QString &text)
    {
        const auto role = m_messages.size() % 2 ? AIChatMessage::Role::user : AIChatMessage::Role::assistant;
        m_messages.append({QUuid::createUuid(), role, text});
    }
    void show() { m_transcript.setMessages(m_messages); }

    [[nodiscard]] QScrollBar *bar() { return m_transcript.verticalScrollBar(); }
    [[nodiscard]] QWidget &viewport() { return *m_transcript.viewport(); }

private:
    ChatTranscript m_transcript;
    QList<AIChatMessage> m_messages;
};

/// One notch of the wheel.
void turnWheel(TranscriptInWindow &transcript, int direction)
{
    const QPointF place = transcript.viewport().rect().center();
    QWheelEvent event(place, transcript.viewport().mapToGlobal(place), {}, {0, -120 * direction},
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&transcript.viewport(), &event);
}

void turnPage(TranscriptInWindow &transcript, int direction)
{
    transcript.bar()->triggerAction(direction > 0 ? QAbstractSlider::SliderPageStepAdd
                                                  : QAbstractSlider::SliderPageStepSub);
}

/// From the newest message up and back down. The step must move the transcript.
void scroll(benchmark::State &state, void (*step)(TranscriptInWindow &, int))
{
    TranscriptInWindow transcript(int(state.range(0)));
    std::vector<double> samples;
    for (auto _ : state) {
        for (const int direction : {-1, 1}) {
            for (int i = 0; i < 100; ++i) {
                const int before = transcript.bar()->value();
                samples.push_back(millisecondsUntilPainted([&] { step(transcript, direction); }));
                if (transcript.bar()->value() == before)
                    state.SkipWithError("the transcript stands still");
            }
        }
    }
    state.counters["frame"] = percentile(99, samples);
    state.counters["frameMedian"] = percentile(50, samples);
}
BENCHMARK_CAPTURE(scroll, wheel, turnWheel)->Arg(1'000)->Iterations(3);
BENCHMARK_CAPTURE(scroll, page, turnPage)->Arg(1'000)->Iterations(3);

/// A message comes below the others.
void arrival(benchmark::State &state, const char *text)
{
    TranscriptInWindow transcript(1'000);
    const QString whole = QString::fromUtf8(text);
    const QString answer = whole.repeated(state.range(0) / whole.toUtf8().size());
    std::vector<double> samples;
    for (auto _ : state) {
        transcript.add(answer);
        samples.push_back(millisecondsUntilPainted([&] { transcript.show(); }));
    }
    state.counters["arrival"] = percentile(50, samples);
}
BENCHMARK_CAPTURE(arrival, Japanese, "次の一手は、見積書を差し替えることです。\n")
    ->Arg(200)
    ->Arg(200'000)
    ->Iterations(5);
BENCHMARK_CAPTURE(arrival, English, "The next step is to replace the quotation. ")
    ->Arg(200'000)
    ->Iterations(5);

std::vector<Budget> budgets()
{
    std::vector<Budget> result;
    for (const auto &[what, benchmark] :
         {std::pair("wheel", "scroll/wheel/1000"), {"page", "scroll/page/1000"}}) {
        result.push_back(
            {"scrolling 1,000 messages by the " + std::string(what) + ", a frame, 99th percentile", "ms",
             benchmark, "", "frame", 16});
        result.push_back({"  median", "ms", benchmark, "", "frameMedian", {}});
    }
    for (const auto &[what, benchmark] :
         {std::pair("an answer of 200 bytes comes", "arrival/Japanese/200"),
          {"an answer of 200 kB in Japanese", "arrival/Japanese/200000"},
          {"an answer of 200 kB in English, one line", "arrival/English/200000"}})
        result.push_back({what, "ms", benchmark, "", "arrival", {}});
    return result;
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    return measureBudgets(argc, argv, budgets(), 5);
}
