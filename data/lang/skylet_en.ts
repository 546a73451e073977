<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name>NetInfoUIExPlugin</name>
    <message>
        <source>IDS_TREE_SPEED</source>
        <translation>Speed:</translation>
    </message>
    <message>
        <source>IDS_TREE_DATA</source>
        <translation>Data:</translation>
    </message>
    <message>
        <source>IDS_TREE_TIME_TRANSFER</source>
        <translation>Connection time:</translation>
    </message>
    <message>
        <source>IDS_TREE_UPLOADED_DATA</source>
        <translation>Uploaded:</translation>
    </message>
    <message>
        <source>IDS_TREE_DOWNLOADED_DATA</source>
        <translation>Downloaded:</translation>
    </message>
    <message>
        <source>IDS_TREE_TRANSFER</source>
        <translation>Transfer</translation>
    </message>
    <message>
        <source>IDS_DIALUP_TRANSFER</source>
        <translation>(mobile)</translation>
    </message>
    <message>
        <source>IDS_WLAN_TRANSFER</source>
        <translation>(Wi-Fi)</translation>
    </message>
    <message>
        <source>IDS_TREE_UPLOAD</source>
        <translation>Upload</translation>
    </message>
    <message>
        <source>IDS_TREE_DOWNLOAD</source>
        <translation>Download</translation>
    </message>
    <message>
        <source>IDS_TREE_STATISTICS</source>
        <translation>Statistics</translation>
    </message>
    <message>
        <source>IDS_TREE_TIME_LASTRESET</source>
        <translation>Last reset:</translation>
    </message>
    <message>
        <source>IDS_TREE_DAILY</source>
        <translation>Today</translation>
    </message>
    <message>
        <source>IDS_TREE_MONTHLY</source>
        <translation>This month</translation>
    </message>
    <message>
        <source>IDS_TREE_YEARLY</source>
        <translation>This year</translation>
    </message>
    <message>
        <source>IDS_NOTES</source>
        <translation>The figures are estimates; your operator’s bill counts.</translation>
    </message>
    <message>
        <source>IDS_CLEAR_VOLUME</source>
        <translation>Reset statistics</translation>
    </message>
    <message>
        <source>IDS_EXPAND_ALL</source>
        <translation>Expand all</translation>
    </message>
    <message>
        <source>IDS_COLLAPSE_ALL</source>
        <translation>Collapse all</translation>
    </message>
    <message>
        <source>IDS_CONFIRM</source>
        <translation>Confirm</translation>
    </message>
    <message>
        <source>IDS_RESET_QUERY</source>
        <translation>Reset all stored statistics? This cannot be undone.</translation>
    </message>
    <message>
        <source>IDS_YES</source>
        <translation>Yes</translation>
    </message>
    <message>
        <source>IDS_NO</source>
        <translation>No</translation>
    </message>
    <message>
        <source>IDS_OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>IDS_SETTING_NAME</source>
        <translation>Data usage</translation>
    </message>
    <message>
        <source>IDS_UNIT_B</source>
        <translation>B</translation>
    </message>
    <message>
        <source>IDS_UNIT_KB</source>
        <translation>KB</translation>
    </message>
    <message>
        <source>IDS_UNIT_MB</source>
        <translation>MB</translation>
    </message>
    <message>
        <source>IDS_UNIT_GB</source>
        <translation>GB</translation>
    </message>
    <message>
        <source>IDS_UNIT_TB</source>
        <translation>TB</translation>
    </message>
    <message>
        <source>IDS_UNIT_BPS</source>
        <translation>B/s</translation>
    </message>
    <message>
        <source>IDS_UNIT_KBPS</source>
        <translation>KB/s</translation>
    </message>
    <message>
        <source>IDS_UNIT_MBPS</source>
        <translation>MB/s</translation>
    </message>
    <message>
        <source>IDS_UNIT_GBPS</source>
        <translation>GB/s</translation>
    </message>
    <message>
        <source>IDS_UNIT_TBPS</source>
        <translation>TB/s</translation>
    </message>
    <message>
        <source>IDS_STA_TOTALVOLUME</source>
        <translation>Data used:</translation>
    </message>
    <message>
        <source>IDC_STA_TIMEVOLUME</source>
        <translation>Time used:</translation>
    </message>
    <message>
        <source>IDC_VOLUMENOTES</source>
        <translation>The figures are estimates; your operator’s bill counts.</translation>
    </message>
    <message>
        <source>IDS_BTN_RESET</source>
        <translation>Reset</translation>
    </message>
    <message>
        <source>IDC_BTN_SETLIMIT</source>
        <translation>Set limit…</translation>
    </message>
    <message>
        <source>IDS_UNIT_HOURS</source>
        <translation>Hours</translation>
    </message>
    <message>
        <source>IDS_BOX_WARNBEFORE</source>
        <translation>You have almost used up your data volume for this period.</translation>
    </message>
    <message>
        <source>IDS_BOX_WARNAFTER</source>
        <translation>You have used up your data volume for this period.</translation>
    </message>
    <message>
        <source>IDS_BOX_TIMEWARNBEFORE</source>
        <translation>You have almost used up your connection time for this period.</translation>
    </message>
    <message>
        <source>IDS_BOX_TIMEWARNAFTER</source>
        <translation>You have used up your connection time for this period.</translation>
    </message>
    <message>
        <source>IDS_BOX_WARNTITLE</source>
        <translation>Usage warning</translation>
    </message>
    <message>
        <source>IDS_BOX_WARNIDOK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>IDS_DISCONNECT_BUTTON</source>
        <translation>Disconnect</translation>
    </message>
    <message>
        <source>IDS_SAVESETTING</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>IDS_CLEAR_BUTTON</source>
        <translation>Clear history</translation>
    </message>
    <message>
        <source>IDS_GRP_RECURRENCE</source>
        <translation>Recurrence</translation>
    </message>
    <message>
        <source>IDS_RADIO_DAILY</source>
        <translation>Daily</translation>
    </message>
    <message>
        <source>IDC_RADIO_WEEKLY</source>
        <translation>Weekly</translation>
    </message>
    <message>
        <source>IDS_RADIO_MONTHLY</source>
        <translation>Monthly</translation>
    </message>
    <message>
        <source>IDS_MONDAY</source>
        <translation>Mon</translation>
    </message>
    <message>
        <source>IDS_TUESDAY</source>
        <translation>Tue</translation>
    </message>
    <message>
        <source>IDS_WEDNESAY</source>
        <translation>Wed</translation>
    </message>
    <message>
        <source>IDS_THURSDAY</source>
        <translation>Thu</translation>
    </message>
    <message>
        <source>IDS_FRIDAY</source>
        <translation>Fri</translation>
    </message>
    <message>
        <source>IDS_SATURDAY</source>
        <translation>Sat</translation>
    </message>
    <message>
        <source>IDS_SUNDAY</source>
        <translation>Sun</translation>
    </message>
    <message>
        <source>IDS_GRP_SETLIMIT</source>
        <translation>Limit</translation>
    </message>
    <message>
        <source>IDS_UNIT_DATA_VOLUME_MB</source>
        <translation>MB</translation>
    </message>
    <message>
        <source>IDS_SAVE_FAILED</source>
        <translation>The settings could not be saved.</translation>
    </message>
    <message>
        <source>IDS_CHANGED_SAVE</source>
        <translation>The settings have been saved.</translation>
    </message>
    <message>
        <source>IDS_PROPMT</source>
        <translation>Note</translation>
    </message>
    <message>
        <source>IDS_TRENDS_SPEED</source>
        <translation>Speed in </translation>
    </message>
    <message>
        <source>IDS_TRENDS_UPLOAD_SPEED</source>
        <translation>Upload speed</translation>
    </message>
    <message>
        <source>IDS_TRENDS_DOWNLOAD_SPEED</source>
        <translation>Download speed</translation>
    </message>
    <message>
        <source>IDS_GRP_SETPERIOD</source>
        <translation>Period</translation>
    </message>
    <message>
        <source>IDS_GRP_SETWARNINGS</source>
        <translation>Warnings</translation>
    </message>
    <message>
        <source>IDS_STAT_MAX</source>
        <translation>Usage is measured on this computer. Your operator may count differently.</translation>
    </message>
    <message>
        <source>IDS_STA_STARTDATE</source>
        <translation>Start date:</translation>
    </message>
    <message>
        <source>IDS_CHK_SET</source>
        <translation>Recurring</translation>
    </message>
    <message>
        <source>IDS_CHK_VOLUME</source>
        <translation>Data</translation>
    </message>
    <message>
        <source>IDS_VOLUME_LIMIT</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>IDS_CHK_BEFORE</source>
        <translation>Warn before a limit is reached</translation>
    </message>
    <message>
        <source>IDS_CHK_AFTER</source>
        <translation>Warn when a limit is exceeded</translation>
    </message>
    <message>
        <source>IDS_INPUT_DATA_VOLUME</source>
        <translation>Please enter the data limit.</translation>
    </message>
    <message>
        <source>IDS_INPUT_TIME_VOLUME_LIMIT</source>
        <translation>Please enter the time limit.</translation>
    </message>
</context>
<context>
    <name>skylet</name>
    <message>
        <source>HOST_TITLE</source>
        <translation>Skylet</translation>
    </message>
    <message>
        <source>HOST_MENU_FILE</source>
        <translation>&amp;File</translation>
    </message>
    <message>
        <source>HOST_MENU_VIEW</source>
        <translation>&amp;View</translation>
    </message>
    <message>
        <source>HOST_MENU_LANGUAGE</source>
        <translation>&amp;Language</translation>
    </message>
    <message>
        <source>HOST_QUIT</source>
        <translation>&amp;Quit</translation>
    </message>
    <message>
        <source>HOST_SETTINGS</source>
        <translation>&amp;Settings…</translation>
    </message>
    <message>
        <source>HOST_SETTINGS_TITLE</source>
        <translation>Settings</translation>
    </message>
    <message>
        <source>HOST_SETTINGS_PAGES</source>
        <translation>Settings pages</translation>
    </message>
    <message>
        <source>HOST_OK</source>
        <translation>&amp;OK</translation>
    </message>
    <message>
        <source>HOST_CANCEL</source>
        <translation>C&amp;ancel</translation>
    </message>
    <message>
        <source>HOST_MENU_DEVICE</source>
        <translation>&amp;Device</translation>
    </message>
    <message>
        <source>HOST_DEVICE_AUTOMATIC</source>
        <translation>&amp;Automatic</translation>
    </message>
    <message>
        <source>HOST_DEVICE_ABSENT</source>
        <translation>%1 (not present)</translation>
    </message>
    <message>
        <source>HOST_DEVICE_REFUSED</source>
        <translation>The device cannot be chosen now: another program counts.</translation>
    </message>
    <message>
        <source>HOST_CONNECT</source>
        <translation>&amp;Connect</translation>
    </message>
    <message>
        <source>HOST_CONNECTING</source>
        <translation>Connecting…</translation>
    </message>
    <message>
        <source>HOST_CONNECT_FAILED</source>
        <translation>The connection could not be made: NetworkManager reported an error or did not answer in time.</translation>
    </message>
    <message>
        <source>HOST_CONNECT_NO_DEVICE</source>
        <translation>There is no device that could connect.</translation>
    </message>
    <message>
        <source>HOST_CONNECT_NO_SERVICE</source>
        <translation>The connection cannot be made: NetworkManager is not running.</translation>
    </message>
    <message>
        <source>HOST_CONNECT_NOT_MANAGED</source>
        <translation>The connection cannot be made: NetworkManager does not manage the device.</translation>
    </message>
    <message>
        <source>HOST_CONNECT_REFUSED</source>
        <translation>The connection cannot be made: you are not permitted to do that.</translation>
    </message>
    <message>
        <source>HOST_CONNECT_NO_PROFILE</source>
        <translation>The connection cannot be made: NetworkManager has no connection set up for the device.</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT</source>
        <translation>&amp;Disconnect</translation>
    </message>
    <message>
        <source>HOST_DISCONNECTING</source>
        <translation>The connection is being ended…</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT_DONE</source>
        <translation>The connection has been ended.</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT_NO_CONNECTION</source>
        <translation>There is no connection to end.</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT_NO_SERVICE</source>
        <translation>The connection cannot be ended: NetworkManager is not running.</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT_NOT_MANAGED</source>
        <translation>The connection cannot be ended: NetworkManager does not manage it.</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT_REFUSED</source>
        <translation>The connection cannot be ended: you are not permitted to.</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT_FAILED</source>
        <translation>The connection could not be ended: NetworkManager reported an error or did not answer.</translation>
    </message>
    <message>
        <source>HOST_VIEW_USAGE</source>
        <translation>&amp;Usage</translation>
    </message>
    <message>
        <source>HOST_VIEW_STATISTICS</source>
        <translation>&amp;Statistics</translation>
    </message>
    <message>
        <source>HOST_VIEWS</source>
        <translation>Views</translation>
    </message>
    <message>
        <source>HOST_PAGE</source>
        <translation>Page of the plug-in</translation>
    </message>
    <message>
        <source>HOST_MESSAGES</source>
        <translation>Messages</translation>
    </message>
    <message>
        <source>HOST_DISMISS</source>
        <translation>&amp;Close</translation>
    </message>
    <message>
        <source>HOST_INTERFACE</source>
        <translation>Interface</translation>
    </message>
    <message>
        <source>HOST_CONNECTION</source>
        <translation>Connection</translation>
    </message>
    <message>
        <source>HOST_STORE</source>
        <translation>Store</translation>
    </message>
    <message>
        <source>HOST_NO_INTERFACE</source>
        <translation>No interface</translation>
    </message>
    <message>
        <source>HOST_CONNECTED</source>
        <translation>Connected</translation>
    </message>
    <message>
        <source>HOST_NOT_CONNECTED</source>
        <translation>Not connected</translation>
    </message>
    <message>
        <source>HOST_DEMO</source>
        <translation>Demonstration</translation>
    </message>
    <message>
        <source>HOST_NO_PLUGIN</source>
        <translation>No plug-in is loaded, so there is nothing to show.</translation>
    </message>
    <message>
        <source>HOST_NO_DATA_FOLDER</source>
        <translation>The data folder %1 cannot be made; nothing is remembered.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_FAILURE</source>
        <translation>Plug-in %1: %2</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_NO_FOLDER</source>
        <translation>There is no such folder.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_FOLDER_EMPTY</source>
        <translation>The folder holds no plug-ins.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_NO_LIBRARY</source>
        <translation>The folder holds no library.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_NOT_LOADED</source>
        <translation>It cannot be loaded: %1</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_FOREIGN</source>
        <translation>It is not a plug-in for this program.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_NOT_READABLE</source>
        <translation>The file is empty or cannot be read.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_WRONG_QT</source>
        <translation>It was built for Qt %1, but this program uses Qt %2.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_TWICE</source>
        <translation>Its identifier already belongs to %1.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_NOT_STARTED</source>
        <translation>It did not start.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_NO_STATISTICS</source>
        <translation>It has no statistics page.</translation>
    </message>
</context>
</TS>
