#pragma once

#include <Foundation/Foundation.h>

// What can be seen.
#include <AppKit/NSBezierPath.h>
#include <AppKit/NSColor.h>
#include <AppKit/NSFont.h>
#include <AppKit/NSImage.h>
#include <AppKit/NSLayoutConstraint.h>
#include <AppKit/NSScreen.h>
#include <AppKit/NSStackView.h>
#include <AppKit/NSText.h>
#include <AppKit/NSView.h>
#include <AppKit/NSWindow.h>
// Controls.
#include <AppKit/NSButton.h>
#include <AppKit/NSControl.h>
#include <AppKit/NSImageView.h>
#include <AppKit/NSPopUpButton.h>
#include <AppKit/NSProgressIndicator.h>
#include <AppKit/NSSwitch.h>
#include <AppKit/NSTextField.h>
// Input, menus, the status bar.
#include <AppKit/NSEvent.h>
#include <AppKit/NSMenu.h>
#include <AppKit/NSStatusBar.h>
// Applications.
#include <AppKit/NSApplication.h>
#include <AppKit/NSWorkspace.h>
