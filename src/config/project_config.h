#pragma once

#include "config/settings.h"

// The settings of the application, shared by its projects and kept for its user. Each setting X of the
// table has getX and setX.
//
// A setting is read once, when it is first asked for; after that the process sees only what it sets
// itself. A value that is missing, of another type or cannot be read is the default, and so is a text of
// more than 259 bytes. A value that cannot be written holds until the process ends.
//
// The application says setRegistryKey first and then initialize. Without a registry key nothing stored
// is touched: settings start from their defaults and are kept in memory.
//
// All functions may be called from any thread.
class CProjectConfig
{
public:
    // The path of the key that holds everything, its levels separated by "\"; stored as it stands.
    static void setRegistryKey(CString const & key);
    // Prepares the stored settings for this version: drops toolbar layouts of any other, and sees to it
    // that there is a system directory, the current one unless another was set.
    static void initialize();
    // Deletes all that is stored. What was read or set before stays in force until the process ends.
    static void reset();
    // Deletes the keys of toolbars: all that lie directly under the registry key, but for those where
    // settings and the desktop's own values are. A key that cannot be deleted ends it.
    static void resetToolbarFolders();
    static void disableChangeNotification(int disable);

    // The layout of toolbars in use is stored by its name. It is read and written each time.
    static CString getToolbarLayoutRegistryName();
    static CString getToolbarLayoutStyleName(int n);
    static CString getDefaultToolbarLayoutStyle();
    static CString getToolbarLayoutStyle();
    static void setToolbarLayoutStyle(int n);

#define ORVANE_DECLARE_SETTING(type, name, ...)                                                                        \
    static orvane::SettingValue<type> get##name();                                                                     \
    static void set##name(orvane::SettingArgument<type> value);

    ORVANE_SETTINGS(ORVANE_DECLARE_SETTING)
#undef ORVANE_DECLARE_SETTING

private:
    // Nothing reads it.
    static inline int m_disableChangeNotification = 0;
    // The number of the message by which windows could be told of a change; nothing posts it.
    static unsigned const m_changedMessage;
};
