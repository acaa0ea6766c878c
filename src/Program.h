#pragma once

#include "calibration/FormCalibration.h"
#include "configuration/Configuration.h"
#include "consoles/Consoles.h"
#include "discovery/BusSearch.h"
#include "discovery/DeviceTree.h"
#include "firmware/FirmwareDownload.h"
#include "logger/LoggerTabs.h"
#include "shell/FormMain.h"
#include "tools/BenchTools.h"
#include "workspace/LiveData.h"
#include "workspace/ModulePageLoad.h"
#include "workspace/PageSelection.h"
#include "workspace/Pages.h"

namespace vorn
{

/// Makes the drawings and help pages known; before anything that shows them.
void InitResources();

/// The program put together: the main window with all that is attached to it.
class Program final
{
public:
    explicit Program(const Host &host);
    ~Program();

    /// The start of the program: finds the ports and puts up the first port's page. False if the machine has
    /// no port, told to the operator; then the program is to end.
    bool Load();

    FormMain Main;
    class DeviceTree DeviceTree;
    class BusSearch BusSearch;
    class Pages Pages;
    class ModulePageLoad ModulePageLoad;
    class LiveData LiveData;
    class Consoles Consoles;
    class Calibration Calibration;
    class Configuration Configuration;
    class PageSelection PageSelection;
    class BenchTools BenchTools;
    class FirmwareDownload FirmwareDownload;
    class LoggerTabs LoggerTabs;

private:
    void AttachMenus();
    void AttachWindows();
    void ProbePorts();
};

} // namespace vorn
