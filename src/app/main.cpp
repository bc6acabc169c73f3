#include "app/theme.h"

#include <QApplication>

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    Theme::apply(Theme::FollowSystem);
    return 0;
}
