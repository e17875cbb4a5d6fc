-- What wixl cannot write. One statement a line; make_msi.py has msibuild carry them out on the installer.

-- The page is in every version, so its folder is the earlier one. 17: the folder of the file that the value names, in the
-- registry's 64-bit view.
INSERT INTO `RegLocator` (`Signature_`, `Root`, `Key`, `Type`) VALUES ('RememberedFolder', 2, 'Software\Classes\CLSID\$(ClassId)\InprocServer32', 17)
INSERT INTO `AppSearch` (`Property`, `Signature_`) VALUES ('REMEMBERED_FOLDER', 'RememberedFolder')

-- Folder and start at login are as asked for, else as before. The sequence with windows settles the folder, too.
INSERT INTO `CustomAction` (`Action`, `Type`, `Source`, `Target`) VALUES ('KeepFolder', 51, 'INSTALLDIR', '[REMEMBERED_FOLDER]')
INSERT INTO `CustomAction` (`Action`, `Type`, `Source`, `Target`) VALUES ('KeepStart', 51, 'STARTATLOGIN', '[REMEMBERED_START]')
INSERT INTO `CustomAction` (`Action`, `Type`, `Source`, `Target`) VALUES ('StartByDefault', 51, 'STARTATLOGIN', '1')
INSERT INTO `InstallUISequence` (`Action`, `Condition`, `Sequence`) VALUES ('KeepFolder', 'REMEMBERED_FOLDER AND NOT INSTALLDIR AND (Installed OR REPLACED_VERSION)', 51)
INSERT INTO `InstallExecuteSequence` (`Action`, `Condition`, `Sequence`) VALUES ('KeepFolder', 'REMEMBERED_FOLDER AND NOT INSTALLDIR AND (Installed OR REPLACED_VERSION)', 51)
INSERT INTO `InstallExecuteSequence` (`Action`, `Condition`, `Sequence`) VALUES ('KeepStart', 'REMEMBERED_START AND NOT STARTATLOGIN', 52)
INSERT INTO `InstallExecuteSequence` (`Action`, `Condition`, `Sequence`) VALUES ('StartByDefault', 'NOT STARTATLOGIN', 53)
UPDATE `Property` SET `Value` = 'REPLACED_VERSION;NEWER_VERSION;INSTALLDIR;STARTATLOGIN;REMEMBERED_FOLDER;REMEMBERED_START' WHERE `Property` = 'SecureCustomProperties'

-- 324: a 64-bit component with a registry value as its key path, whose condition is asked again at each repair. Turning the
-- start at login off removes what an earlier installation has written.
UPDATE `Component` SET `Condition` = 'STARTATLOGIN <> "0"', `Attributes` = 324 WHERE `Component` = 'StartAtLogin'
UPDATE `Component` SET `Condition` = 'STARTATLOGIN = "0"', `Attributes` = 324 WHERE `Component` = 'NoStartAtLogin'
CREATE TABLE `RemoveRegistry` (`RemoveRegistry` CHAR(72) NOT NULL, `Root` INT NOT NULL, `Key` CHAR(255) NOT NULL LOCALIZABLE, `Name` CHAR(255) LOCALIZABLE, `Component_` CHAR(72) NOT NULL PRIMARY KEY `RemoveRegistry`)
INSERT INTO `RemoveRegistry` (`RemoveRegistry`, `Root`, `Key`, `Name`, `Component_`) VALUES ('Start', 2, 'Software\Microsoft\Windows\CurrentVersion\Run', 'KvnMouseApl', 'NoStartAtLogin')

-- Before any file is looked at, the package's own program closes the service that runs in this session, whatever its
-- folder. It gives up after half a minute; 66: the installation goes on in any case.
INSERT INTO `CustomAction` (`Action`, `Type`, `Source`, `Target`) VALUES ('CloseService', 66, 'Service', '--quit')
INSERT INTO `InstallExecuteSequence` (`Action`, `Sequence`) VALUES ('CloseService', 1350)

-- Explorer starts the service as the user whose desktop this is, without an administrator's rights. The system's account
-- (S-1-5-18) has no desktop. 226: nobody waits for it.
INSERT INTO `CustomAction` (`Action`, `Type`, `Source`, `Target`) VALUES ('StartService', 226, 'INSTALLDIR', '"[WindowsFolder]explorer.exe" "[INSTALLDIR]KvnMouseApl.exe"')
INSERT INTO `InstallExecuteSequence` (`Action`, `Condition`, `Sequence`) VALUES ('StartService', 'NOT (REMOVE = "ALL") AND UserSID <> "S-1-5-18"', 6700)
