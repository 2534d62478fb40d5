#pragma once

namespace orvane::app
{

// Where the user's settings are in the store of settings.
inline constexpr char storedSettingsKey[] = "Orvane Schedule";

// From then on settings start from what the user keeps, and are kept. A program says so at its start.
void useStoredSettings();

}  // namespace orvane::app
