#include "shared/announce.h"

#include "shared/notification_brake.h"

void AnnouncesLater::tellBrake(int cost)
{
    NotificationBrake::instance().told(cost);
}
