#include "announce.h"

#include "notification_brake.h"

void AnnouncesLater::tellBrake(int cost)
{
    NotificationBrake::instance().told(cost);
}
