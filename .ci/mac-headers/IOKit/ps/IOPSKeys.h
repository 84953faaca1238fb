#pragma once

#define kIOPSCurrentCapacityKey "Current Capacity"
#define kIOPSIsChargingKey "Is Charging"
#define kIOPSTimeToEmptyKey "Time to Empty"
#define kIOPSTimeToFullChargeKey "Time to Full Charge"
