#include "platform/ui/application.h"
#include "platform/ui/process.h"
#include "shell/main.h"

int main(int argc, char **argv)
{
    Application application(argc, argv);
    return runProcess(Main);
}
