#include "platform/ui/application.h"
#include "shell/main.h"

int main(int argc, char **argv)
{
    Application application(argc, argv);
    return runProcess(Main);
}
