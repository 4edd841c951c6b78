<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!--
SPDX-FileCopyrightText: velmora-installationhandler contributors
SPDX-License-Identifier: BSD-3-Clause
-->
<TS version="2.1" language="en">
<context>
    <name></name>
    <message id="installationhandler-application_installation_disallowed">
        <source>This device&apos;s policy does not allow installing apps (%1).</source>
        <extracomment>Notification shown when the device&apos;s policy forbids the user to install applications %1 is the operating system&apos;s name</extracomment>
        <translation>This device&apos;s policy does not allow installing apps (%1).</translation>
    </message>
    <message id="installationhandler-cancel">
        <source>Cancel</source>
        <extracomment>Button that closes the dialog without installing anything; as short as possible</extracomment>
        <translation>Cancel</translation>
    </message>
    <message id="installationhandler-hide-path">
        <source>Hide full path</source>
        <extracomment>Spoken by screen readers for the file&apos;s name, which can be pressed, while its whole path is shown</extracomment>
        <translation>Hide full path</translation>
    </message>
    <message id="installationhandler-install">
        <source>Install</source>
        <extracomment>Button that starts the installation; as short as possible</extracomment>
        <translation>Install</translation>
    </message>
    <message id="installationhandler-install-question">
        <source>Install this app?</source>
        <extracomment>Heading of the dialog that asks whether a package file is to be installed</extracomment>
        <translation>Install this app?</translation>
    </message>
    <message id="installationhandler-own-words">
        <source>In the app&apos;s own words:</source>
        <extracomment>Label of the summary that the package&apos;s author wrote, in contrast to the system&apos;s own words</extracomment>
        <translation>In the app&apos;s own words:</translation>
    </message>
    <message id="installationhandler-show-path">
        <source>Show full path</source>
        <extracomment>Spoken by screen readers for the file&apos;s name, which can be pressed, while its path is shortened</extracomment>
        <translation>Show full path</translation>
    </message>
    <message id="installationhandler-untrusted-source">
        <source>This app is not from the app store and has not been checked. It could harm your device or data. Install it only if you trust where you got it.</source>
        <extracomment>Warning above the details of a package that the user got elsewhere than in the app store</extracomment>
        <translation>This app is not from the app store and has not been checked. It could harm your device or data. Install it only if you trust where you got it.</translation>
    </message>
    <message id="installationhandler-user-aborted">
        <source>The user cancelled the installation</source>
        <extracomment>Outcome of an installation that the user declined in the confirmation dialog</extracomment>
        <translation>The user cancelled the installation</translation>
    </message>
    <message id="installationhandler-version">
        <source>Version %1</source>
        <extracomment>Version of the package %1 is the version</extracomment>
        <translation>Version %1</translation>
    </message>
</context>
</TS>
