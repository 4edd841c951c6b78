<?xml version="1.0" encoding="utf-8"?>
<!--
SPDX-FileCopyrightText: velmora-installationhandler contributors
SPDX-License-Identifier: BSD-3-Clause

Stands in for the package manager's catalogue.
-->
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name></name>
    <message id="zarn_installation_error_desc_NoSpace">
        <source>No space left on the device</source>
        <translation>No space left on the device</translation>
    </message>
    <message id="zarn_installation_error_desc_">
        <source>Nobody knows why</source>
        <translation>Nobody knows why</translation>
    </message>
    <message id="zarn_installation_error_desc_Zu_groß_文">
        <source>Dateien sind zu groß</source>
        <translation>Dateien sind zu groß</translation>
    </message>
    <message id="zarn_installation_error_desc_One">
        <source>Place %1 for it</source>
        <translation>Place %1 for it</translation>
    </message>
    <message id="zarn_installation_error_desc_Two">
        <source>Place %2 for it</source>
        <translation>Place %2 for it</translation>
    </message>
    <message id="zarn_installation_error_desc_Three">
        <source>Place %3 for it</source>
        <translation>Place %3 for it</translation>
    </message>
    <message id="zarn_installation_error_desc_Four">
        <source>Place %4 for it</source>
        <translation>Place %4 for it</translation>
    </message>
    <message id="zarn_installation_error_desc_Percent">
        <source>100% full, %n files</source>
        <translation>100% full, %n files</translation>
    </message>
    <message id="zarn_installation_error_desc_Lines">
        <source>First line
second line</source>
        <translation>First line
second line</translation>
    </message>
</context>
</TS>
