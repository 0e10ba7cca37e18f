# A Tk window with one focused field: wish tk_fields.tcl entry|text|password TEXT
lassign $argv kind text
wm title . Fields
if {$kind eq "text"} {
    text .field -undo 1 -width 60 -height 10
    .field insert 1.0 $text
    .field edit reset
} else {
    entry .field -width 60
    if {$kind eq "password"} { .field configure -show * }
    .field insert 0 $text
}
pack .field
bind all <Control-a> {event generate %W <<SelectAll>>; break}
after idle {focus -force .field}
