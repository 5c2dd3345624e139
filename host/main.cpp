#include <iostream>

#include "commands/CommandLine.h"
#include "terminal/Console.h"

int main(int argumentCount, char** arguments)
{
    zetaudiopluginmanager::PrepareConsole();
    return zetaudiopluginmanager::RunCommandLine(
        zetaudiopluginmanager::CommandLineArguments(argumentCount, arguments), std::cout);
}
