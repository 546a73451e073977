#include "GraphTest.h"

#include <QApplication>
#include <QImage>
#include <QtTest>

#include <utility>

#include "NetInfoGraphConfigParse.h"
#include "NetInfoUILogic.h"

void GraphTest::init()
{
    resetFakeHost();
    resetFakeSdk();
    m_folder.reset(new PluginFolder);
    m_folder->writeProfile(
        PluginFolder::profile({ "#FF101010", "#FF010101", "#FFFFFF00", "#FF0000FF", "#FF808080" }));
    m_folder->writeConfig(PluginFolder::document(
        "<speedunit><item name=\"KBPS\" value=\"1024\" type=\"1024\" langResID=\"-KBPS\"/>"
        "</speedunit>"));
    m_log.reset(new TestLog);
    NetInfoUILogic::Instance()->Init();
    m_log->takeLines();
}

void GraphTest::cleanup()
{
    m_graph.reset();
    NetInfoUILogic::Destroy();
    NetInfoGraphConfigParse::OnDestroy();
    QApplication::setLayoutDirection(Qt::LeftToRight);
    const QStringList problems = m_log->takeProblems();
    m_log.reset();
    QVERIFY2(problems.isEmpty(), qPrintable(problems.join(QLatin1Char(10))));
    QCOMPARE(QApplication::topLevelWidgets(), QWidgetList());
}

void GraphTest::make(const QSize &size)
{
    m_graph.reset(new GraphWidget);
    m_graph->resize(size);
}

QSharedPointer<PaintRecorder> GraphTest::record()
{
    const QSharedPointer<PaintRecorder> recorder(new PaintRecorder(m_graph->size()));
    m_graph->render(recorder.data());
    return recorder;
}

QImage GraphTest::image(qreal ratio)
{
    QImage image(m_graph->size() * ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::magenta);
    m_graph->render(&image);
    return image;
}

void GraphTest::addSamples(int count)
{
    for (int i = 0; i < count; ++i)
        m_graph->DrawGraph((i * 7) % 31, (i * 11) % 59);
}

QStringList GraphTest::labels()
{
    QStringList found;
    const QSharedPointer<PaintRecorder> painted = record();
    for (const RecordedText &text : std::as_const(painted->texts)) {
        bool isNumber = false;
        text.text.toInt(&isNumber);
        if (isNumber)
            found << text.text;
    }
    return found;
}
