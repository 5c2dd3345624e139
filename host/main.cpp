#include <iostream>

#include "commands/CommandLine.h"
#include "terminal/Console.h"

int main(int argumentCount, char** arguments)
{
    const zetaudiopluginmanager::PreparedConsole console;
    return zetaudiopluginmanager::RunCommandLine(
        zetaudiopluginmanager::CommandLineArguments(argumentCount, arguments), std::cout);
}
