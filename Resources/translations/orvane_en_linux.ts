<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="en_US">
<context>
    <name>AwakeText</name>
    <message>
        <source>Keep your Mac awake on demand — for a set time or until you turn it off.</source>
        <translation>Keep your computer awake on demand — for a set time or until you turn it off.</translation>
    </message>
    <message>
        <source>Let Mac Sleep</source>
        <translation>Let Computer Sleep</translation>
    </message>
    <message>
        <source>Asleep</source>
        <translation>Not kept awake</translation>
    </message>
    <message>
        <source>Keep my Mac awake now</source>
        <translation>Keep my computer awake now</translation>
    </message>
    <message>
        <source>Like Caffeine — stops the screen from dimming and sleeping. Off keeps only the system awake.</source>
        <translation>Stops the screen from dimming and sleeping. Off keeps only the system awake.</translation>
    </message>
    <message>
        <source>Menu Bar</source>
        <translation>System Tray</translation>
    </message>
    <message>
        <source>Show a dedicated coffee-cup menu-bar icon</source>
        <translation>Show a separate eye in the system tray</translation>
    </message>
    <message>
        <source>Click it to toggle Awake; right-click for durations — just like the Caffeine app.</source>
        <translation>Click it to turn Awake on or off; right-click for durations.</translation>
    </message>
    <message>
        <source>Use the coffee-cup icon, the Orvane menu, or a keyboard shortcut to flip Awake on and off from anywhere.</source>
        <translation>Use the eye in the system tray, Orvane’s menu, or a keyboard shortcut to turn Awake on and off from anywhere.</translation>
    </message>
    <message>
        <source>Your Mac sleeps normally.</source>
        <translation>Your computer sleeps as usual.</translation>
    </message>
    <message>
        <source>Your Mac can&apos;t be kept awake at the moment. Orvane keeps trying.</source>
        <translation>Your computer can&apos;t be kept awake at the moment. Orvane keeps trying.</translation>
    </message>
</context>
<context>
    <name>ClipboardHistoryText</name>
    <message>
        <source>Keep a searchable history of what you copy, and paste from a list — like Windows&apos; Win+V.</source>
        <translation>Keep a searchable history of what you copy, and paste from a list — like Win+V on Windows.</translation>
    </message>
    <message>
        <source>Needs Accessibility permission. When off, the item is copied and you press ⌘V yourself.</source>
        <translation>When off, the item is copied and you press Ctrl+V yourself, or Ctrl+Shift+V in a terminal.</translation>
    </message>
    <message>
        <source>Assign a shortcut to open the clipboard history popup in the Keyboard Shortcuts section above.</source>
        <translation>Set a shortcut that opens the clipboard history under Keyboard Shortcuts, at the top of this page.</translation>
    </message>
</context>
<context>
    <name>CoreText</name>
    <message>
        <source>Windows &amp; Switching</source>
        <translation>Windows</translation>
    </message>
    <message>
        <source>Finder &amp; Files</source>
        <translation>Files</translation>
    </message>
    <message>
        <source>Move, focus, and read windows of other apps (Alt-Tab, cut &amp; paste).</source>
        <translation>Move, focus, and read the windows of other apps.</translation>
    </message>
    <message>
        <source>Capture live window thumbnails for the switcher and dock previews.</source>
        <translation>Read what is on the screen.</translation>
    </message>
    <message>
        <source>Ask Finder for the selected files and target folder (cut &amp; paste).</source>
        <translation>Ask the file manager for the selected files and the open folder.</translation>
    </message>
</context>
<context>
    <name>ImageResizerText</name>
    <message>
        <source>Open the resizer (here, a shortcut, or the menu bar), drop images in, and resize. Resized copies are saved next to the originals.</source>
        <translation>Open the resizer (here, by a shortcut, or from Orvane’s menu in the system tray), drop images in, and resize. Resized copies are saved next to the originals.</translation>
    </message>
</context>
<context>
    <name>KeySwapText</name>
    <message>
        <source>Use Windows-style Ctrl+C / Ctrl+V / Ctrl+Z everywhere — Orvane maps Ctrl to Cmd.</source>
        <translation>Use Ctrl+C, Ctrl+V and Ctrl+Z in terminals too, as in every other app — or let Ctrl and Super trade places.</translation>
    </message>
    <message>
        <source>See and rewrite keyboard events to remap Ctrl to Cmd.</source>
        <translation>See and change key presses, so that Ctrl can act otherwise.</translation>
    </message>
    <message>
        <source>Some macOS versions require Accessibility to modify key events in secure fields.</source>
        <translation>Tell which app is in front, so that the list of exclusions holds.</translation>
    </message>
    <message>
        <source>Ctrl with A, C, F, N, R, S, T, V, W, X or Z becomes the command of the app in front. Cmd stays Cmd, and every other key stays as it is.</source>
        <translation>Ctrl with A, C, F, N, R, S, T, V, W, X or Z means what it means in most apps. Ctrl+C already copies everywhere but in terminals, where it interrupts: take a terminal off the list below, and it copies there too. Every other key stays as it is.</translation>
    </message>
    <message>
        <source>Cmd (on many keyboards Super, the key with a logo) acts as Ctrl and Ctrl acts as Cmd: with every key, with a click and alone. Shortcuts with ⌘, Orvane&apos;s and the system&apos;s, are pressed with Ctrl, except in the apps left out below.</source>
        <translation>Super (the key with a logo) acts as Ctrl, and Ctrl acts as Super: with every key, with a click and alone. Shortcuts with Super, Orvane&apos;s and the desktop&apos;s, are pressed with Ctrl, except in the apps left out below.</translation>
    </message>
    <message>
        <source>Full swap changes every Ctrl/Cmd shortcut — including system ones. Use with care.</source>
        <translation>Full swap changes every shortcut with Ctrl or Super — including the desktop’s own. Use with care.</translation>
    </message>
    <message>
        <source>Terminals and IDEs are excluded by default so Ctrl+C keeps working there.</source>
        <translation>Terminals and code editors are left out at first, so that Ctrl+C keeps interrupting there.</translation>
    </message>
    <message>
        <source>Common shortcuts — ⌃C / ⌃V / ⌃X / ⌃Z / ⌃A become ⌘</source>
        <translation>Common shortcuts — Ctrl+C / Ctrl+V / Ctrl+X / Ctrl+Z / Ctrl+A as in most apps</translation>
    </message>
    <message>
        <source>Swap Ctrl and Cmd everywhere</source>
        <translation>Swap Ctrl and Super everywhere</translation>
    </message>
    <message>
        <source>Terminal</source>
        <translation>Terminals</translation>
    </message>
    <message>
        <source>MacVim</source>
        <translation>Vim</translation>
    </message>
</context>
<context>
    <name>KeyText</name>
    <message>
        <source>↩</source>
        <translation>Return</translation>
    </message>
    <message>
        <source>⌫</source>
        <translation>Backspace</translation>
    </message>
    <message>
        <source>⌦</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>↘</source>
        <translation>End</translation>
    </message>
    <message>
        <source>⎋</source>
        <translation>Esc</translation>
    </message>
    <message>
        <source>?⃝</source>
        <translation>Help</translation>
    </message>
    <message>
        <source>↖</source>
        <translation>Home</translation>
    </message>
    <message>
        <source>⇥</source>
        <translation>Tab</translation>
    </message>
    <message>
        <source>⇞</source>
        <translation>Page Up</translation>
    </message>
    <message>
        <source>⇟</source>
        <translation>Page Down</translation>
    </message>
    <message>
        <source>↑</source>
        <translation>Up</translation>
    </message>
    <message>
        <source>→</source>
        <translation>Right</translation>
    </message>
    <message>
        <source>↓</source>
        <translation>Down</translation>
    </message>
    <message>
        <source>←</source>
        <translation>Left</translation>
    </message>
    <message>
        <source>☒</source>
        <translation>Clear</translation>
    </message>
    <message>
        <source>%1⃣</source>
        <comment>a key of the keypad</comment>
        <translation>Num %1</translation>
    </message>
    <message>
        <source>⌃</source>
        <translation>Ctrl+</translation>
    </message>
    <message>
        <source>⌥</source>
        <translation>Alt+</translation>
    </message>
    <message>
        <source>⇧</source>
        <translation>Shift+</translation>
    </message>
    <message>
        <source>⌘</source>
        <translation>Super+</translation>
    </message>
    <message>
        <source>🌐︎</source>
        <translation>Fn+</translation>
    </message>
    <message>
        <source>⌃⌥⇧⌘</source>
        <comment>These four in the order in which a shortcut is written</comment>
        <translation>⌘⌃⌥⇧</translation>
    </message>
</context>
<context>
    <name>KeyboardShortcutsText</name>
    <message>
        <source>Delete</source>
        <translation>Backspace</translation>
    </message>
    <message>
        <source>Forward Delete</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>Option</source>
        <translation>Alt</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Super</translation>
    </message>
</context>
<context>
    <name>MouseToolsText</name>
    <message>
        <source>Find My Cursor (Spotlight)</source>
        <translation>Find My Cursor (Circle of Light)</translation>
    </message>
    <message>
        <source>Spotlight size</source>
        <translation>Size of the circle</translation>
    </message>
    <message>
        <source>pt</source>
        <comment>points</comment>
        <translation>px</translation>
    </message>
</context>
<context>
    <name>PlainPasteText</name>
    <message>
        <source>Paste the cleaned text automatically. Without it, the clipboard is cleaned and you press ⌘V.</source>
        <translation>Paste the cleaned text automatically. Without it, the clipboard is cleaned and you press Ctrl+V.</translation>
    </message>
    <message>
        <source>Auto-paste needs Accessibility permission. When off, your clipboard is cleaned and you press ⌘V yourself.</source>
        <translation>When off, your clipboard is cleaned and you press Ctrl+V yourself, or Ctrl+Shift+V in a terminal.</translation>
    </message>
    <message>
        <source>Assign a shortcut above (a common choice is ⇧⌘V) to paste clean text anywhere.</source>
        <translation>Set a shortcut above, such as Super+Shift+V, to paste clean text anywhere.</translation>
    </message>
</context>
<context>
    <name>ShellText</name>
    <message>
        <source>Menu Bar &amp; Dock</source>
        <translation>System Tray &amp; Task Bar</translation>
    </message>
    <message>
        <source>Orvane is menu-bar-first. With the Dock icon hidden it runs quietly in the menu bar — use the Open Orvane shortcut below to reach this window anytime.</source>
        <translation>Orvane runs quietly in the system tray. Use its icon there, or the Open Orvane shortcut below, to reach this window anytime.</translation>
    </message>
    <message>
        <source>Show menu bar icon</source>
        <translation>Show icon in the system tray</translation>
    </message>
    <message>
        <source>Show Dock icon</source>
        <translation>Show in the task bar</translation>
    </message>
    <message>
        <source>Orvane only needs a permission for the features you turn on, and asks for it then. You can grant or revoke any of them here or in System Settings.</source>
        <translation>Orvane only needs a permission for the features you turn on. Here you see what your desktop allows, and what is missing.</translation>
    </message>
    <message>
        <source>No capabilities are on</source>
        <translation>No features are on</translation>
    </message>
    <message>
        <source>Bring the Windows habits you miss to your Mac — window switching,
keyboard and mouse remapping, cut &amp; paste, and more.
Turn on only the features you want.</source>
        <translation>Small helpers for your desktop — windows that snap into place,
a clipboard that remembers, keys that do what you expect, and more.
Turn on only the features you want.</translation>
    </message>
    <message>
        <source>Open System Settings</source>
        <translation>Open Settings</translation>
    </message>
    <message>
        <source>Orvane&apos;s features need macOS privacy permissions. You can grant them now, or later when you turn each feature on.</source>
        <translation>Orvane&apos;s features rely on what your desktop allows. You can see to it now, or later when you turn each feature on.</translation>
    </message>
    <message>
        <source>Granted it but still shows off? macOS applies new permissions only after Orvane restarts.</source>
        <translation>Changed something, but it still shows off? Some changes count only after Orvane restarts.</translation>
    </message>
</context>
<context>
    <name>SnapZonesText</name>
    <message>
        <source>Drag windows to the edges — or use shortcuts — to snap them into halves, quarters, or fullscreen.</source>
        <translation>Drag windows to the edges — or use shortcuts — to snap them into halves, quarters, or the whole screen.</translation>
    </message>
    <message>
        <source>pt</source>
        <comment>points</comment>
        <translation>px</translation>
    </message>
    <message>
        <source>Assign keyboard shortcuts for halves, quarters, maximize, and Snap Layouts in the Keyboard Shortcuts section above.</source>
        <translation>Set keyboard shortcuts for halves, quarters, maximize, and Snap Layouts under Keyboard Shortcuts, at the top of this page.</translation>
    </message>
</context>
</TS>
