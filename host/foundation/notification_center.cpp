// host/foundation/notification_center.cpp: CoreFoundation's Darwin notification centre over the kernel's
// notifications.
