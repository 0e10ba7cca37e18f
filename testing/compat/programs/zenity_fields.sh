#!/bin/sh
# A zenity window with one field: zenity_fields.sh text|entry|password TEXT
case $1 in
text) printf %s "$2" | exec zenity --text-info --editable --title Fields ;;
entry) exec zenity --entry --entry-text "$2" --title Fields ;;
password) exec zenity --password --title Fields ;; # takes no text
esac
