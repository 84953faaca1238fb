#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// What the Mac that stands in for a real one answers, and what it was asked.
struct StandInMac {
    int hostStatus = 0;
    unsigned ticks[4] = {};
    unsigned active = 0;
    unsigned wired = 0;
    unsigned compressed = 0;
    std::map<std::string, std::uint64_t> systemValues;
    std::map<std::string, std::int64_t> capacities;
    int thermalState = 0;

    bool hasPowerInfo = true;
    std::vector<std::map<std::string, int>> powerSources;
    std::optional<bool> isCharging;

    int keychainStatus = 0;
    std::map<std::string, std::string> keychain; ///< by service and account

    std::map<int, std::string> applications; ///< bundle identifiers by process id; empty for none
    bool isInBundle = true;
    bool isRefusing = false;
    int loginStatus = 0;
    std::string trashed; ///< where the Trash says that something lies now

    struct MenuLine {
        std::string title;
        std::string key;
        std::string action;
        void *line;
    };
    std::vector<MenuLine> menuLines;
    bool isRightClick = false;
    bool isAtLogin = false;
    void *button = nullptr;   ///< of the item in the menu bar
    void *observer = nullptr; ///< of the program's start

    std::vector<std::string> asked;
    long liveReferences = 0;

    /// What was asked since the last time.
    std::vector<std::string> news();
};

StandInMac &mac();

#if __OBJC__
#import <Foundation/Foundation.h>

/// What an object holds under that name; their runtime adds no variables to a class.
template <typename Value>
Value &held(id object, const char *name)
{
    static std::map<std::pair<void *, std::string>, Value> all;
    return all[{(__bridge void *)object, name}];
}

#define HELD(type, name, setter)                                                                             \
    -(type)name                                                                                              \
    {                                                                                                        \
        return held<type>(self, #name);                                                                      \
    }                                                                                                        \
    -(void)setter : (type)value                                                                              \
    {                                                                                                        \
        held<type>(self, #name) = value;                                                                     \
    }

/// Sends a message by its name.
@interface NSObject (Perform)
- (void)performSelector:(SEL)selector withObject:(id)first withObject:(id)second;
@end
#endif
