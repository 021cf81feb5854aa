#ifndef PLUGINCLIP_H
#define PLUGINCLIP_H

#include <QString>

// An application-defined value type, shared by a plug-in and the program
// that loads it.
struct PluginClip
{
    QString name;
    int frames = 0;
    bool operator==(const PluginClip& other) const { return name == other.name && frames == other.frames; }
};

#endif
