#include "shell/main.h"

#include "platform/ui/application.h"

int main(int argc, char **argv)
{
    Application application(argc, argv);
    return runProcess(Main);
}
