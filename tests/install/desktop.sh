#!/bin/bash
# What a desktop and a software centre are told of the program is well formed.
#
#   desktop.sh FOLDER
set -eu
cd "$1"
desktop-file-validate corvantine.desktop
appstreamcli validate --no-net corvantine.metainfo.xml
