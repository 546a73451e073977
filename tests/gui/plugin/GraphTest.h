#pragma once
// What the tests of the trend graph share: fakes, a profile, and the widget as a recording.

#include <QObject>
#include <QScopedPointer>
#include <QSize>

#include "FakeHost.h"
#include "FakeSdk.h"
#include "NetInfoGraphWidget.h"
#include "PaintRecorder.h"
#include "PluginFolder.h"
#include "TestLog.h"

class GraphTest : public QObject
{
    Q_OBJECT
protected:
    //! Makes the widget anew, \a size large.
    void make(const QSize &size = QSize(600, 300));
    //! What a whole paint of the widget paints, without its pixmaps.
    [[nodiscard]] QSharedPointer<PaintRecorder> record();
    //! The widget as an image with \a ratio device pixels to a logical one.
    QImage image(qreal ratio = 1);
    //! Adds \a count samples that differ.
    void addSamples(int count);
    //! The scale's labels, from the top.
    [[nodiscard]] QStringList labels();

    // The colours of the test's profile.
    const QColor m_background = QColor(16, 16, 16);
    const QColor m_uploadColour = QColor(255, 255, 0);
    const QColor m_downloadColour = QColor(0, 0, 255);
    const QColor m_ink = QColor(128, 128, 128);

    QScopedPointer<PluginFolder> m_folder;
    QScopedPointer<TestLog> m_log;
    QScopedPointer<GraphWidget> m_graph;

private slots:
    void init();
    void cleanup();
};
