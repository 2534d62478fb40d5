#include "app/stored_settings.h"

#include "config/project_config.h"

namespace orvane::app
{

void useStoredSettings()
{
    CProjectConfig::setRegistryKey(storedSettingsKey);
}

}  // namespace orvane::app
