#pragma once

#include <Foundation/Foundation.h>

// What can be seen.
#include <AppKit/NSBezierPath.h>
#include <AppKit/NSColor.h>
#include <AppKit/NSImage.h>
#include <AppKit/NSView.h>
#include <AppKit/NSWindow.h>
// Input, menus, the status bar.
#include <AppKit/NSEvent.h>
#include <AppKit/NSMenu.h>
#include <AppKit/NSStatusBar.h>
// Applications.
#include <AppKit/NSApplication.h>
#include <AppKit/NSWorkspace.h>
