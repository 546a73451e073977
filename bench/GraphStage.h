#pragma once
// A graph in a shown window, frame by frame.

#include <QImage>
#include <QObject>

#include <memory>

#include "GraphPeers.h"

//! Counts the paint events of a widget.
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget &widget);
    [[nodiscard]] int count() const;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    int m_count = 0;
};

class GraphStage
{
public:
    //! Shows \a peer in a window of \a view's size.
    GraphStage(const GraphView &view, std::unique_ptr<GraphPeer> peer);
    //! Appends the next pair and returns when the canvas has been painted.
    void nextFrame();
    //! Ends the program unless every frame paints the canvas once, shows something new and holds
    //! both curves with the view's samples. \a name is for the message.
    void check(const char *name, bool hasCurves);

private:
    [[nodiscard]] QImage shown();
    void checkFrames(const char *name);
    void checkCurves(const char *name);

    GraphView m_view;
    std::unique_ptr<GraphPeer> m_peer;
    PaintCounter m_paints;
    int m_next; // number of the next pair
};
