#pragma once
// An engine over scripted links, clocks and a store in a folder of its own.

#include "engine/Engine.h"

#include <QtTest>

#include <memory>
#include <new>

#include "ScriptedLinks.h"
#include "StoreFolder.h"

constexpr qint64 kSecond = 1000000000;

//! What the tests change and the engine sees.
struct EngineWorld
{
    ScriptedLinks script;
    qint64 bootNs = 5 * kSecond;
    qint64 wall = kNow;
    bool noMemory = false; //!< in the midst of a look

    //! The link that the tests use.
    [[nodiscard]] velq::Link &link()
    {
        return script.links.at(3).link;
    }
    void flow(quint64 download, quint64 upload)
    {
        script.links.at(3).counters.download += download;
        script.links.at(3).counters.upload += upload;
    }
    void pass(qint64 seconds = 1)
    {
        bootNs += seconds * kSecond;
        wall += seconds;
    }
};

class EngineStage
{
protected:
    //! With one link "va", which is up and has the default route.
    void setUp()
    {
        m_world = {};
        m_world.script.connect(3, "va").counters = { 5000, 7000 };
        m_folder = std::make_unique<StoreFolder>();
        start();
        m_engine->sample();
    }
    void start()
    {
        velq::EngineParts parts;
        parts.source = std::make_unique<ScriptedLinkSource>(m_world.script);
        parts.facts = [this]() -> std::shared_ptr<const velq::NetworkFacts> {
            if (m_world.noMemory)
                throw std::bad_alloc();
            return nullptr;
        };
        parts.store = m_folder->options();
        parts.boot = "boot";
        parts.clock = { [this] { return std::int64_t(m_world.bootNs); },
                        [this] { return std::int64_t(m_world.wall); } };
        m_engine = std::make_unique<velq::Engine>(std::move(parts));
    }
    //! As after the end of the process: nothing more is written.
    void restart()
    {
        m_engine.reset();
        start();
    }
    void tearDown()
    {
        m_engine.reset();
        m_folder.reset();
    }
    [[nodiscard]] velq::Report get(int kind, int type = 0)
    {
        velq::Report report;
        if (!m_engine->report(kind, type, report))
            qFatal("no report");
        return report;
    }
    void secondOf(quint64 download, quint64 upload)
    {
        m_world.flow(download, upload);
        m_world.pass();
        m_engine->tick();
    }
    //! Time passes until \a wall, while nothing is connected.
    void jump(qint64 wall)
    {
        if (wall > m_world.wall)
            m_world.bootNs += (wall - m_world.wall) * kSecond;
        m_world.wall = wall;
        m_world.script.bounced = true;
        m_engine->sample();
    }

    EngineWorld m_world;
    std::unique_ptr<StoreFolder> m_folder;
    std::unique_ptr<velq::Engine> m_engine;
};
