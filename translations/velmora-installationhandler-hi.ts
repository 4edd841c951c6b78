<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!--
SPDX-FileCopyrightText: velmora-installationhandler contributors
SPDX-License-Identifier: BSD-3-Clause
-->
<TS version="2.1" language="hi">
<context>
    <name></name>
    <message id="installationhandler-application_installation_disallowed">
        <source>This device&apos;s policy does not allow installing apps (%1).</source>
        <extracomment>Notification shown when the device&apos;s policy forbids the user to install applications %1 is the operating system&apos;s name</extracomment>
        <translation>इस डिवाइस की नीति (%1) ऐप इंस्टॉल करने की अनुमति नहीं देती।</translation>
    </message>
    <message id="installationhandler-cancel">
        <source>Cancel</source>
        <extracomment>Button that closes the dialog without installing anything; as short as possible</extracomment>
        <translation>रद्द करें</translation>
    </message>
    <message id="installationhandler-hide-path">
        <source>Hide full path</source>
        <extracomment>Spoken by screen readers for the file&apos;s name, which can be pressed, while its whole path is shown</extracomment>
        <translation>पूरा पाथ छिपाएँ</translation>
    </message>
    <message id="installationhandler-install">
        <source>Install</source>
        <extracomment>Button that starts the installation; as short as possible</extracomment>
        <translation>इंस्टॉल करें</translation>
    </message>
    <message id="installationhandler-install-question">
        <source>Install this app?</source>
        <extracomment>Heading of the dialog that asks whether a package file is to be installed</extracomment>
        <translation>क्या यह ऐप इंस्टॉल करना है?</translation>
    </message>
    <message id="installationhandler-own-words">
        <source>In the app&apos;s own words:</source>
        <extracomment>Label of the summary that the package&apos;s author wrote, in contrast to the system&apos;s own words</extracomment>
        <translation>ऐप के अपने शब्दों में:</translation>
    </message>
    <message id="installationhandler-show-path">
        <source>Show full path</source>
        <extracomment>Spoken by screen readers for the file&apos;s name, which can be pressed, while its path is shortened</extracomment>
        <translation>पूरा पाथ दिखाएँ</translation>
    </message>
    <message id="installationhandler-untrusted-source">
        <source>This app is not from the app store and has not been checked. It could harm your device or data. Install it only if you trust where you got it.</source>
        <extracomment>Warning above the details of a package that the user got elsewhere than in the app store</extracomment>
        <translation>यह ऐप, ऐप स्टोर से नहीं आया है और इसकी जाँच नहीं की गई है। यह आपके डिवाइस या डेटा को नुकसान पहुँचा सकता है। इसे तभी इंस्टॉल करें, जब आपको उस जगह पर भरोसा हो, जहाँ से यह मिला है।</translation>
    </message>
    <message id="installationhandler-user-aborted">
        <source>The user cancelled the installation</source>
        <extracomment>Outcome of an installation that the user declined in the confirmation dialog</extracomment>
        <translation>उपयोगकर्ता ने इंस्टॉलेशन रद्द कर दिया</translation>
    </message>
    <message id="installationhandler-version">
        <source>Version %1</source>
        <extracomment>Version of the package %1 is the version</extracomment>
        <translation>संस्करण %1</translation>
    </message>
</context>
</TS>
