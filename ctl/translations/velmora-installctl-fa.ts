<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!--
SPDX-FileCopyrightText: velmora-installationhandler contributors
SPDX-License-Identifier: BSD-3-Clause
-->
<TS version="2.1" language="fa">
<context>
    <name></name>
    <message id="installctl-blank-at-end">
        <source>with %1 a path must not end in a blank</source>
        <extracomment>%1 is the option --sdk</extracomment>
        <translation>با %1 مسیر نباید به فاصلهٔ خالی ختم شود</translation>
    </message>
    <message id="installctl-bus-lost">
        <source>the session bus went away before the service reported an outcome</source>
        <extracomment>Why it is not known how the request has ended</extracomment>
        <translation>پیش از آنکه سرویس نتیجه‌ای گزارش کند، گذرگاه نشست از بین رفت</translation>
    </message>
    <message id="installctl-bus-silent">
        <source>it has not answered within %1 s</source>
        <extracomment>The reason why there is no session bus</extracomment>
        <translation>ظرف %1 ثانیه پاسخی نداد</translation>
    </message>
    <message id="installctl-confirming">
        <source>waiting for your answer on the device&apos;s screen, then installing</source>
        <extracomment>The service asks the user in a dialog on the screen of the device, and then installs the package</extracomment>
        <translation>در انتظار پاسخ شما روی صفحهٔ دستگاه و سپس در انتظار نصب</translation>
    </message>
    <message id="installctl-declined">
        <source>declined</source>
        <extracomment>The user has declined the installation</extracomment>
        <translation>رد شد</translation>
    </message>
    <message id="installctl-failed">
        <source>failed</source>
        <extracomment>The reason follows</extracomment>
        <translation>ناموفق</translation>
    </message>
    <message id="installctl-forbidden">
        <source>forbidden</source>
        <extracomment>The device&apos;s policy forbids the installation</extracomment>
        <translation>ممنوع</translation>
    </message>
    <message id="installctl-goes-on">
        <source>the service goes on</source>
        <extracomment>After Ctrl-C</extracomment>
        <translation>سرویس به کار خود ادامه می‌دهد</translation>
    </message>
    <message id="installctl-help-declined">
        <source>the user has declined</source>
        <extracomment>An exit status</extracomment>
        <translation>کاربر رد کرده است</translation>
    </message>
    <message id="installctl-help-done">
        <source>done</source>
        <extracomment>An exit status</extracomment>
        <translation>انجام شد</translation>
    </message>
    <message id="installctl-help-failed">
        <source>something has failed</source>
        <extracomment>An exit status</extracomment>
        <translation>کاری ناموفق بوده است</translation>
    </message>
    <message id="installctl-help-forbidden">
        <source>the device&apos;s policy forbids it</source>
        <extracomment>An exit status</extracomment>
        <translation>خط‌مشی دستگاه آن را ممنوع کرده است</translation>
    </message>
    <message id="installctl-help-help">
        <source>print this text</source>
        <extracomment>An option</extracomment>
        <translation>نمایش این متن</translation>
    </message>
    <message id="installctl-help-interrupted">
        <source>interrupted by a signal; the service goes on</source>
        <extracomment>An exit status</extracomment>
        <translation>با سیگنال قطع شد؛ سرویس به کار خود ادامه می‌دهد</translation>
    </message>
    <message id="installctl-help-json">
        <source>print JSON objects, one a line</source>
        <extracomment>An option</extracomment>
        <translation>نمایش شیءهای JSON، هر کدام در یک سطر</translation>
    </message>
    <message id="installctl-help-keep-user-data">
        <source>keep the data of the application</source>
        <extracomment>An option</extracomment>
        <translation>نگه داشتن داده‌های برنامه</translation>
    </message>
    <message id="installctl-help-launcher">
        <source>remove the application of a launcher</source>
        <extracomment>An option</extracomment>
        <translation>حذف برنامهٔ یک راه‌انداز</translation>
    </message>
    <message id="installctl-help-no-wait">
        <source>do not wait for the outcome</source>
        <extracomment>An option</extracomment>
        <translation>منتظر نتیجه نماندن</translation>
    </message>
    <message id="installctl-help-notify">
        <source>also show desktop notifications</source>
        <extracomment>An option</extracomment>
        <translation>همچنین نمایش اعلان‌های میزکار</translation>
    </message>
    <message id="installctl-help-options">
        <source>Options:</source>
        <extracomment>A heading</extracomment>
        <translation>گزینه‌ها:</translation>
    </message>
    <message id="installctl-help-problem">
        <source>a file cannot be used; nothing was requested</source>
        <extracomment>An exit status</extracomment>
        <translation>یکی از پرونده‌ها قابل استفاده نیست؛ چیزی درخواست نشد</translation>
    </message>
    <message id="installctl-help-quiet">
        <source>print errors only</source>
        <extracomment>An option</extracomment>
        <translation>فقط نمایش خطاها</translation>
    </message>
    <message id="installctl-help-sdk">
        <source>install in sdk mode, without a question if allowed</source>
        <extracomment>An option</extracomment>
        <translation>نصب در حالت SDK، در صورت مجاز بودن بدون پرسش</translation>
    </message>
    <message id="installctl-help-statuses">
        <source>Exit status:</source>
        <extracomment>A heading</extracomment>
        <translation>وضعیت خروج:</translation>
    </message>
    <message id="installctl-help-timed-out">
        <source>the time is over; the service goes on</source>
        <extracomment>An exit status</extracomment>
        <translation>مهلت تمام شد؛ سرویس به کار خود ادامه می‌دهد</translation>
    </message>
    <message id="installctl-help-timeout">
        <source>wait no longer than this, 0 for no limit</source>
        <extracomment>An option</extracomment>
        <translation>بیش از این منتظر نماندن، 0 برای بدون محدودیت</translation>
    </message>
    <message id="installctl-help-unavailable">
        <source>no session bus or no service</source>
        <extracomment>An exit status</extracomment>
        <translation>گذرگاه نشست یا سرویس در دسترس نیست</translation>
    </message>
    <message id="installctl-help-unclear">
        <source>the outcome is not known, or may be that of another request</source>
        <extracomment>An exit status</extracomment>
        <translation>نتیجه نامعلوم است یا شاید نتیجهٔ درخواستی دیگر باشد</translation>
    </message>
    <message id="installctl-help-unprivileged">
        <source>the caller may not ask for this</source>
        <extracomment>An exit status</extracomment>
        <translation>درخواست‌کننده مجاز به این کار نیست</translation>
    </message>
    <message id="installctl-help-unwritten">
        <source>done, but the output could not be written</source>
        <extracomment>An exit status</extracomment>
        <translation>انجام شد، اما نوشتن خروجی ممکن نشد</translation>
    </message>
    <message id="installctl-help-usage">
        <source>bad command line</source>
        <extracomment>An exit status</extracomment>
        <translation>خط فرمان نادرست</translation>
    </message>
    <message id="installctl-help-version">
        <source>print the version</source>
        <extracomment>An option</extracomment>
        <translation>نمایش نسخه</translation>
    </message>
    <message id="installctl-installed">
        <source>installed</source>
        <extracomment>A package has been installed</extracomment>
        <translation>نصب شد</translation>
    </message>
    <message id="installctl-installing">
        <source>installing</source>
        <extracomment>A package is being installed</extracomment>
        <translation>در حال نصب</translation>
    </message>
    <message id="installctl-interrupted">
        <source>interrupted</source>
        <extracomment>After Ctrl-C</extracomment>
        <translation>قطع شد</translation>
    </message>
    <message id="installctl-launcher-gone">
        <source>the launcher is gone, and the service has reported nothing</source>
        <extracomment>Why an application counts as removed; a launcher is a .desktop file</extracomment>
        <translation>راه‌انداز دیگر وجود ندارد و سرویس چیزی گزارش نکرده است</translation>
    </message>
    <message id="installctl-launcher-there">
        <source>the service has reported nothing, and the launcher is still there</source>
        <extracomment>Why it is not known whether an application has been removed; a launcher is a .desktop file</extracomment>
        <translation>سرویس چیزی گزارش نکرده و راه‌انداز هنوز وجود دارد</translation>
    </message>
    <message id="installctl-monitor-bus-lost">
        <source>the session bus went away</source>
        <extracomment>An error</extracomment>
        <translation>گذرگاه نشست از بین رفت</translation>
    </message>
    <message id="installctl-no-bus">
        <source>no session bus: %1</source>
        <extracomment>%1 is the reason</extracomment>
        <translation>گذرگاه نشست در دسترس نیست: %1</translation>
    </message>
    <message id="installctl-nonsense">
        <source>the service reported something that cannot be understood</source>
        <extracomment>Why it is not known how the request has ended</extracomment>
        <translation>سرویس چیزی نامفهوم گزارش کرد</translation>
    </message>
    <message id="installctl-not-regular">
        <source>not a regular file</source>
        <extracomment>Why a file cannot be installed</extracomment>
        <translation>پروندهٔ معمولی نیست</translation>
    </message>
    <message id="installctl-not-started">
        <source>it has not started within %1 s</source>
        <extracomment>The reason why a service is not available</extracomment>
        <translation>ظرف %1 ثانیه آغاز به کار نکرد</translation>
    </message>
    <message id="installctl-not-utf8">
        <source>the path is not UTF-8, so the service cannot be told</source>
        <extracomment>The path of a file</extracomment>
        <translation>مسیر UTF-8 نیست و بنابراین نمی‌توان آن را به سرویس اعلام کرد</translation>
    </message>
    <message id="installctl-notification-installed">
        <source>Installed</source>
        <extracomment>Title of a notification</extracomment>
        <translation>نصب شد</translation>
    </message>
    <message id="installctl-notification-installing">
        <source>Installing…</source>
        <extracomment>Title of a notification</extracomment>
        <translation>در حال نصب…</translation>
    </message>
    <message id="installctl-notification-not-installed">
        <source>Not installed</source>
        <extracomment>Title of a notification</extracomment>
        <translation>نصب نشد</translation>
    </message>
    <message id="installctl-notification-unknown">
        <source>Outcome not known</source>
        <extracomment>Title of a notification: nobody knows how the installation has ended or will end</extracomment>
        <translation>نتیجه نامعلوم</translation>
    </message>
    <message id="installctl-reading">
        <source>reading</source>
        <extracomment>The service reads a package file</extracomment>
        <translation>در حال خواندن</translation>
    </message>
    <message id="installctl-removed">
        <source>removed</source>
        <extracomment>A package has been removed</extracomment>
        <translation>حذف شد</translation>
    </message>
    <message id="installctl-removing">
        <source>removing</source>
        <extracomment>A package is being removed</extracomment>
        <translation>در حال حذف</translation>
    </message>
    <message id="installctl-removing-of">
        <source>removing %1 of %2</source>
        <extracomment>A package is being removed; %1 and %2 are numbers</extracomment>
        <translation>در حال حذف، %1 از %2</translation>
    </message>
    <message id="installctl-requested">
        <source>requested</source>
        <extracomment>The service has taken a request</extracomment>
        <translation>درخواست شد</translation>
    </message>
    <message id="installctl-see-help">
        <source>see %1</source>
        <extracomment>%1 is a command</extracomment>
        <translation>ببینید: %1</translation>
    </message>
    <message id="installctl-service-ended">
        <source>the service ended before it reported an outcome</source>
        <extracomment>Why it is not known how the request has ended</extracomment>
        <translation>سرویس پیش از گزارش نتیجه پایان یافت</translation>
    </message>
    <message id="installctl-service-rests">
        <source>the service does not run</source>
        <extracomment>The service is not on the bus</extracomment>
        <translation>سرویس در حال اجرا نیست</translation>
    </message>
    <message id="installctl-service-runs">
        <source>the service runs</source>
        <extracomment>The service is on the bus</extracomment>
        <translation>سرویس در حال اجراست</translation>
    </message>
    <message id="installctl-timeout">
        <source>timeout</source>
        <extracomment>The time is over</extracomment>
        <translation>مهلت تمام شد</translation>
    </message>
    <message id="installctl-unanswered">
        <source>no answer within %1 s; the service may go on</source>
        <extracomment>The program waits no longer</extracomment>
        <translation>ظرف %1 ثانیه پاسخی نرسید؛ شاید سرویس به کار خود ادامه دهد</translation>
    </message>
    <message id="installctl-unavailable">
        <source>the service is not available: %1</source>
        <extracomment>%1 is the reason</extracomment>
        <translation>سرویس در دسترس نیست: %1</translation>
    </message>
    <message id="installctl-uncertain">
        <source>%1 (may be the outcome of another request)</source>
        <extracomment>%1 is the outcome of a request</extracomment>
        <translation>%1 (شاید نتیجهٔ درخواستی دیگر باشد)</translation>
    </message>
    <message id="installctl-unclear">
        <source>unclear</source>
        <extracomment>It is not known how the request has ended</extracomment>
        <translation>نامشخص</translation>
    </message>
    <message id="installctl-unfinished">
        <source>no outcome within %1 s; the service goes on</source>
        <extracomment>The program waits no longer</extracomment>
        <translation>ظرف %1 ثانیه نتیجه‌ای نرسید؛ سرویس به کار خود ادامه می‌دهد</translation>
    </message>
    <message id="installctl-unprivileged">
        <source>unprivileged</source>
        <extracomment>The user may not ask for this</extracomment>
        <translation>فاقد مجوز</translation>
    </message>
    <message id="installctl-unrequested">
        <source>not requested: %1 of %2</source>
        <extracomment>%1 and %2 are numbers of files or packages</extracomment>
        <translation>%1 مورد از %2 مورد درخواست نشده است</translation>
    </message>
    <message id="installctl-unwritten">
        <source>the output could not be written</source>
        <extracomment>An error</extracomment>
        <translation>نوشتن خروجی ممکن نشد</translation>
    </message>
    <message id="installctl-usage-clash">
        <source>%1 does not go with %2</source>
        <extracomment>%1 is an option such as --sdk or another word of the command line, %2 an option or a command</extracomment>
        <translation>%1 با %2 سازگار نیست</translation>
    </message>
    <message id="installctl-usage-marked-name">
        <source>a name must not begin with the character %1</source>
        <extracomment>%1 is the code of a character</extracomment>
        <translation>نام نباید با نویسهٔ %1 شروع شود</translation>
    </message>
    <message id="installctl-usage-no-command">
        <source>a command is missing</source>
        <extracomment>An error in a command line</extracomment>
        <translation>دستور وارد نشده است</translation>
    </message>
    <message id="installctl-usage-no-subject">
        <source>a file or a name is missing</source>
        <extracomment>An error in a command line</extracomment>
        <translation>پرونده یا نام وارد نشده است</translation>
    </message>
    <message id="installctl-usage-seconds">
        <source>%1 takes a whole number from 0 to %2</source>
        <extracomment>%1 is the option --timeout, %2 a number</extracomment>
        <translation>گزینهٔ %1 عددی صحیح از 0 تا %2 می‌خواهد</translation>
    </message>
    <message id="installctl-usage-too-many-names">
        <source>with %1 no more than %2 names can be given</source>
        <extracomment>%1 is the option --no-wait, %2 a number</extracomment>
        <translation>با %1 نمی‌توان بیش از %2 نام داد</translation>
    </message>
    <message id="installctl-usage-unknown-command">
        <source>there is no command %1</source>
        <extracomment>%1 is the word that was given</extracomment>
        <translation>دستوری به نام %1 وجود ندارد</translation>
    </message>
    <message id="installctl-usage-wrong-name">
        <source>a name is empty or not UTF-8</source>
        <extracomment>An error in a command line</extracomment>
        <translation>یکی از نام‌ها خالی است یا UTF-8 نیست</translation>
    </message>
    <message id="installctl-waiting">
        <source>waiting for the service</source>
        <extracomment>The service has not answered, or does something else at the moment</extracomment>
        <translation>در انتظار سرویس</translation>
    </message>
    <message id="installctl-wrong-url">
        <source>not a URL of a file on this device</source>
        <extracomment>Why a file cannot be installed</extracomment>
        <translation>نشانی URL پرونده‌ای در این دستگاه نیست</translation>
    </message>
</context>
</TS>
