#pragma once

namespace CLI
{
class App;
}

// Each function adds one command, or a family of them, to the program. They stand in the order of the help.
namespace orvane::app
{

void addImport(CLI::App & program);
void addExport(CLI::App & program);
void addSchedule(CLI::App & program);
void addWhy(CLI::App & program);
void addShow(CLI::App & program);
void addDump(CLI::App & program);
void addApply(CLI::App & program);
void addHistory(CLI::App & program);
void addScene(CLI::App & program);
void addConfig(CLI::App & program);
void addVerify(CLI::App & program);
void addGantt(CLI::App & program);
void addChart(CLI::App & program);
void addPlay(CLI::App & program);

}  // namespace orvane::app
