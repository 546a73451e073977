#pragma once
// What tests of the link monitor share: namespaces, links in them, and somebody who follows the
// news.

#include "counters/LinkMonitor.h"

#include <QObject>
#include <QTemporaryDir>

#include <memory>
#include <vector>

#include "Frames.h"
#include "LinkSums.h"
#include "NetworkPair.h"

class LinkStage : public QObject
{
    Q_OBJECT
public:
    //! Runs \a test in namespaces of its own; 77 where that is not possible.
    template <typename Test>
    static int run(int argc, char **argv)
    {
        return run(argc, argv, [] { return std::unique_ptr<QObject>(std::make_unique<Test>()); });
    }

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

protected:
    //! A look of the monitor, whose news are added up.
    void read();
    //! Prints what the news add up to beside what it has to be.
    static void report(const char *what, quint64 counted, quint64 expected);
    //! Makes "va" here and its peer "vb" there, both up.
    [[nodiscard]] static bool makeLink(int index = 0);
    //! Sends frames from "va", or from "vb".
    [[nodiscard]] static bool upload(int count, int size);
    [[nodiscard]] static bool download(int count, int size);
    [[nodiscard]] velq::LinkCounters sumOf(const char *name) const;
    [[nodiscard]] bool isUp(const char *name) const;

    static NetworkPair *s_network;
    QTemporaryDir m_folder; // has a /sys that shows the namespace, where that can be mounted
    bool m_hasPlaces = false;
    std::unique_ptr<velq::LinkMonitor> m_monitor;
    LinkSums m_sums;
    std::vector<velq::DefaultRoute> m_routes;

private:
    static int run(int argc, char **argv, const std::function<std::unique_ptr<QObject>()> &make);
};
