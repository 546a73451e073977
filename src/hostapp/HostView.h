#pragma once

//! What the window shows of the plug-in. The numbers are those of the tabs.
enum class HostView {
    Usage = 0, //!< the page that the plug-in shows by itself
    Statistics = 1 //!< the plug-in's normal page, which it keeps hidden
};
